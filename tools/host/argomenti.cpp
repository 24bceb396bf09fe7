#include "argomenti.h"

#include <cstdio>
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
    "  --count N         watch: stop after N presses\n"
    "  --seconds S       watch: stop after S seconds\n"
    "  --help            this text\n"
    "The built-in tablet walks a grid pressing button 1 at its nodes; in a\n"
    "calibration it digitizes each point asked for by itself, two seconds later:\n"
    "the first nine on the nodes of a grid of 2 by 2 squares, in a grid's order.\n"
    "In a dialog: Tab and the arrows move, Space chooses, Enter confirms, Escape\n"
    "cancels. A watch stops with q, Escape or Ctrl-C.\n";

namespace {

bool Intero(const std::string& s, long minimo, long massimo, int& valore)
{
    char* fine = nullptr;
    const long v = std::strtol(s.c_str(), &fine, 10);
    if (s.empty() || *fine != '\0' || v < minimo || v > massimo) return false;
    valore = static_cast<int>(v);
    return true;
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
             s == "--limits") && !valore) {
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
            char coda = 0;
            if (std::sscanf(a[++i].c_str(), "%d,%d,%d,%d%c", &o.xMin, &o.yMin, &o.xMax, &o.yMax, &coda) != 4 ||
                o.xMin >= o.xMax || o.yMin >= o.yMax) {
                errore = "limits " + a[i] + " are not X1,Y1,X2,Y2 with X1 < X2 and Y1 < Y2";
                return false;
            }
            o.limiti = true;
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
    if (!o.dispositivo.empty() && !o.tipoDato) {
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
