#include "scrittura_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

std::string Cartella(const std::string& percorso)
{
    const auto i = percorso.rfind('/');
    return i == std::string::npos ? "." : i == 0 ? "/" : percorso.substr(0, i);
}

bool AggiungiRiga(const std::string& percorso, const std::string& riga, std::string& errore)
{
    const int fd = open(percorso.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
    if (fd < 0) {
        errore = "cannot open " + percorso + " (" + std::strerror(errno) + ")";
        return false;
    }
    struct stat st {};
    fstat(fd, &st);
    std::size_t fatto = 0;
    errno = 0;
    while (fatto < riga.size()) {
        const ssize_t n = write(fd, riga.data() + fatto, riga.size() - fatto);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) break;
        fatto += static_cast<std::size_t>(n);
    }
    const bool ok = fatto == riga.size() && fsync(fd) == 0;
    if (!ok) {
        errore = "cannot write " + percorso + " (" + std::strerror(errno ? errno : ENOSPC) + ")";
        if (ftruncate(fd, st.st_size) != 0) errore += "; its last line is cut";
    }
    close(fd);
    return ok;
}

bool VerificaScrivibile(const std::string& percorso, std::string& errore)
{
    struct stat st {};
    if (stat(percorso.c_str(), &st) == 0) {
        if (!S_ISREG(st.st_mode)) {
            errore = percorso + " is not a file";
            return false;
        }
        if (access(percorso.c_str(), W_OK) != 0) {
            errore = "cannot write " + percorso + " (" + std::strerror(errno) + ")";
            return false;
        }
        return true;
    }
    const std::string cartella = Cartella(percorso);
    struct stat sc {};
    const char* perche = stat(cartella.c_str(), &sc) != 0 ? "does not exist"
                         : !S_ISDIR(sc.st_mode)           ? "is not a folder"
                         : access(cartella.c_str(), W_OK) != 0 ? "is not writable"
                                                               : nullptr;
    if (perche) {
        errore = "cannot write " + percorso + ": " + cartella + " " + perche;
        return false;
    }
    return true;
}
