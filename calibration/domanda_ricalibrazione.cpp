#include "calibration/domanda_ricalibrazione.h"

#include "platform/toldeko/toldeko.h"
#include "platform/winui.h"
#include "tablet/modulo.h"

namespace {
constexpr unsigned idGiaCalibrata = 10057;
}

bool ConfermaRicalibrazione(GWnd* parent, const std::string& titolo)
{
    const std::string testo = ModuloLibreria().loadString(idGiaCalibrata);
    MessageBeep(MB_ICONQUESTION);
    return MessageBoxA(HandleDi(parent), testo.c_str(), titolo.c_str(), MB_YESNO | MB_ICONQUESTION) != IDNO;
}
