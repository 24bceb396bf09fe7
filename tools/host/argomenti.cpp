#include "argomenti.h"

#include <cerrno>
#include <cstdint>
#include <cstdlib>

const char* const usoHost =
    "usage: velmarin-host [--device PATH --model N] [--port N] [COMMAND...]\n"
    "\n"
    "Works with a digitizing tablet: without --device on a built-in simulated\n"
    "tablet, so it runs anywhere. Commands run in order on the same tablet, so\n"
    "a calibration holds for a watch that follows it:\n"
    "  (none)            an interactive menu in the terminal\n"
    "  config            choose and set up the tablet in its dialogs\n"
    "  calibrate points  calibrate by scattered points (dialogs in the terminal)\n"
    "  calibrate grid    calibrate by a digitized grid (dialogs in the terminal)\n"
    "  watch             stream moves and presses, with East/North once calibrated\n"
    "  demo              a scripted demonstration on a simulated model 5 that ends\n"
    "                    by itself: set up, calibrated by four points, 100 presses\n"
    "                    printed as ground coordinates\n"
    "  ports             list the serial ports and who holds them (alone; --device\n"
    "                    maps the --port to it first)\n"
    "Options:\n"
    "  --device PATH     a real tablet's serial device (needs --model)\n"
    "  --model N         tablet model 1 to 8 (default 5, Summa MicroGrid 3):\n"
    "                    1 SummaGraph.MM BINARY  2 SummaGraph.MM ASCII\n"
    "                    3 Calcomp 2000 ASCII    4 OCE G 6830\n"
    "                    5 Summa MicroGrid 3     6 Rolley MR2\n"
    "                    7 Calcomp 9500          8 Numonics Binary\n"
    "  --port N          COM number 1 to 4 the device is known by (default 1)\n"
    "  --limits X1,Y1,X2,Y2  the tablet's working limits in counts, lower left and\n"
    "                    upper right (the built-in tablet has 0,0,10000,10000); a\n"
    "                    tablet counts as calibrated only once it has limits\n"
    "  --step MS         the built-in tablet's pace, milliseconds a state (default\n"
    "                    200: a point is pressed two seconds after it is asked for)\n"
    "  --count N         watch: stop after N presses\n"
    "  --seconds S       watch: stop after S seconds\n"
    "  --help            this text\n"
    "The built-in tablet walks a grid pressing button 1 at its nodes; in a\n"
    "calibration it digitizes each point asked for by itself, two seconds later:\n"
    "the first nine on the nodes of a grid of 2 by 2 squares, in a grid's order.\n"
    "In a dialog: Tab and the arrows move, Space chooses, Enter presses the\n"
    "focused button or else the default one, Escape cancels; the lines under it\n"
    "name the keys that work. A watch stops with q, Escape or Ctrl-C.\n";

namespace {

// A whole number that fits: one beyond a long is refused like any other
// value out of range, not taken cut to its low bits.
bool Intero(const std::string& s, long minimo, long massimo, int& valore)
{
    char* fine = nullptr;
    errno = 0;
    const long v = std::strtol(s.c_str(), &fine, 10);
    if (s.empty() || *fine != '\0' || errno == ERANGE || v < minimo || v > massimo) return false;
    valore = static_cast<int>(v);
    return true;
}

// "X1,Y1,X2,Y2", four counts that each fit a tablet's 32 bits.
bool Limiti(const std::string& s, TOpzioniHost& o)
{
    int* const valori[] = {&o.xMin, &o.yMin, &o.xMax, &o.yMax};
    std::size_t inizio = 0;
    for (int i = 0; i < 4; ++i) {
        const std::size_t virgola = i < 3 ? s.find(',', inizio) : s.size();
        if (virgola == std::string::npos ||
            !Intero(s.substr(inizio, virgola - inizio), INT32_MIN, INT32_MAX, *valori[i]))
            return false;
        inizio = virgola + 1;
    }
    return o.xMin < o.xMax && o.yMin < o.yMax;
}

}  // namespace

bool AnalizzaArgomenti(const std::vector<std::string>& a, TOpzioniHost& o, std::string& errore)
{
    for (std::size_t i = 0; i < a.size(); ++i) {
        const std::string& s = a[i];
        const bool valore = i + 1 < a.size();
        if (s == "--help" || s == "-h") {
            o.aiuto = true;
            return true;
        }
        if (const int gis = AnalizzaOpzioneGis(a, i, o.gis, errore)) {
            if (gis < 0) return false;
            continue;
        }
        if ((s == "--device" || s == "--model" || s == "--port" || s == "--count" || s == "--seconds" ||
             s == "--limits" || s == "--step") && !valore) {
            errore = s + " needs a value";
            return false;
        }
        if (s == "--device") {
            o.dispositivo = a[++i];
            if (o.dispositivo.empty()) {
                errore = "--device needs a path";
                return false;
            }
        } else if (s == "--model") {
            if (!Intero(a[++i], 1, 8, o.tipo)) {
                errore = "model " + a[i] + " is not a tablet model (1 to 8)";
                return false;
            }
            o.tipoDato = true;
        } else if (s == "--port") {
            if (!Intero(a[++i], 1, 4, o.porta)) {
                errore = "port " + a[i] + " is not COM1 to COM4 (1 to 4)";
                return false;
            }
            o.portaData = true;
        } else if (s == "--limits") {
            if (!Limiti(a[++i], o)) {
                errore = "limits " + a[i] +
                         " are not X1,Y1,X2,Y2, four counts of -2147483648 to 2147483647 with X1 < X2 and Y1 < Y2";
                return false;
            }
            o.limiti = true;
        } else if (s == "--step") {
            if (!Intero(a[++i], 1, 10000, o.passo)) {
                errore = "step " + a[i] + " is not a number of milliseconds (1 to 10000)";
                return false;
            }
        } else if (s == "--count") {
            if (!Intero(a[++i], 1, 1000000000, o.conteggio)) {
                errore = "count " + a[i] + " is not a number of presses";
                return false;
            }
        } else if (s == "--seconds") {
            char* fine = nullptr;
            o.secondi = std::strtod(a[++i].c_str(), &fine);
            if (*fine != '\0' || !(o.secondi > 0)) {
                errore = "seconds " + a[i] + " is not a time above 0";
                return false;
            }
        } else if (s == "config") {
            o.comandi.push_back(TComando::config);
        } else if (s == "watch") {
            o.comandi.push_back(TComando::osserva);
        } else if (s == "digitize") {
            o.comandi.push_back(TComando::digitalizza);
        } else if (s == "demo") {
            o.comandi.push_back(TComando::demo);
        } else if (s == "ports") {
            o.comandi.push_back(TComando::porte);
        } else if (s == "calibrate") {
            const std::string tipo = valore ? a[++i] : "";
            if (tipo == "points") o.comandi.push_back(TComando::calibraPunti);
            else if (tipo == "grid") o.comandi.push_back(TComando::calibraGriglia);
            else {
                errore = "calibrate needs points or grid";
                return false;
            }
        } else {
            errore = "unknown option or command " + s;
            return false;
        }
    }
    const bool porte = !o.comandi.empty() && o.comandi.front() == TComando::porte;
    if (porte && o.comandi.size() > 1) {
        errore = "ports runs alone";
        return false;
    }
    if (!o.dispositivo.empty() && !o.tipoDato && !porte) {
        errore = "--device needs --model: the host cannot tell which tablet is on " + o.dispositivo;
        return false;
    }
    for (TComando c : o.comandi) {
        if (c != TComando::demo) continue;
        if (o.comandi.size() > 1 || !o.dispositivo.empty() || o.tipoDato) {
            errore = "demo runs alone, on its own simulated model 5";
            return false;
        }
    }
    for (TComando c : o.comandi) {
        if (c == TComando::digitalizza && o.gis.gis.percorso.empty()) {
            errore = "digitize needs --out FILE";
            return false;
        }
    }
    if (o.comandi.empty()) o.comandi.push_back(TComando::menu);
    return true;
}
