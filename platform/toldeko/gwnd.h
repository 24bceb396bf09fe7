// GWnd: a window. It holds its handle and its module. A window of the host
// is a GWnd made from the host's handle; the toolkit's own windows (dialogs
// and their controls) live in a TFinestraDialogo and act on it.
#ifndef TOLDEKO_GWND_H
#define TOLDEKO_GWND_H

#include <cstdint>

#include "platform/toldeko/gcmdtarget.h"
#include "platform/toldeko/gmodule.h"
#include "platform/winui.h"

class TFinestraDialogo;

struct GRect {
    std::int32_t left, top, right, bottom;
};

class GWnd : public GCmdTarget {
public:
    explicit GWnd(HWND handle = nullptr, GModule* module = nullptr);
    GWnd(const GWnd&) = delete;
    GWnd& operator=(const GWnd&) = delete;

    HWND handle() const { return hwnd; }
    operator HWND() const { return hwnd; }
    GModule* module() const { return modulo; }

    // The caption of a dialog, the text of a control.
    void setWindowText(const char* text);
    void setDlgItemText(int id, const char* text);
    void enableWindow(bool flag);
    // The client area in pixels, with left and top 0: as the window shows it.
    void getClientRect(GRect& rect) const;
    // Through the platform's MessageBoxA; returns the button's code.
    int messageBox(const char* text, const char* title, unsigned flags);

protected:
    // For the toolkit's own windows: control `indice` of `finestra`, or
    // the dialog itself with -1.
    void Lega(TFinestraDialogo* finestra, int indice, GModule* module);

    TFinestraDialogo* finestra = nullptr;
    int indice = -1;

private:
    HWND hwnd;
    GModule* modulo;
};

// The handle of an owner window that may be missing: null for no owner.
inline HWND HandleDi(const GWnd* finestra) { return finestra ? finestra->handle() : nullptr; }

// The platform's calls on a control that has no object: its handle by its id
// in a dialog, and enabling it. A handle that is no live toolkit window gives
// a null handle and a result of 0.
HWND GetDlgItem(HWND dialog, int id);
int EnableWindow(HWND window, int enable);

#endif
