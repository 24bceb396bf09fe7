// Runs a fuzz target over the files and folders named on its command line,
// so that the corpus replays under any compiler, without libFuzzer.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dati, std::size_t n);

namespace fs = std::filesystem;

namespace {

int Esegui(const fs::path& file)
{
    std::ifstream in(file, std::ios::binary);
    const std::vector<char> byte((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(byte.data()), byte.size());
    return 1;
}

}  // namespace

int main(int argc, char** argv)
{
    int eseguiti = 0;
    for (int i = 1; i < argc; ++i) {
        const fs::path p(argv[i]);
        if (fs::is_directory(p)) {
            for (const auto& e : fs::recursive_directory_iterator(p))
                if (e.is_regular_file()) eseguiti += Esegui(e.path());
        } else {
            eseguiti += Esegui(p);
        }
    }
    std::printf("%d inputs replayed\n", eseguiti);
    return eseguiti > 0 ? 0 : 1;
}
