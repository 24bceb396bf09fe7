#include "gwnd.h"

#include "platform/toldeko/finestra_dialogo.h"

GWnd::GWnd(HWND handle, GModule* module) : hwnd(handle), modulo(module) {}

void GWnd::Lega(TFinestraDialogo* f, int i, GModule* module)
{
    finestra = f;
    indice = i;
    hwnd = f->Maniglia(i);
    modulo = module;
}

void GWnd::setWindowText(const char* text)
{
    if (finestra) finestra->ImpostaTesto(indice, text ? text : "");
}

void GWnd::setDlgItemText(int id, const char* text)
{
    if (!finestra || indice != -1) return;
    const int i = finestra->Indice(id);
    if (i >= 0) finestra->ImpostaTesto(i, text ? text : "");
}

void GWnd::enableWindow(bool flag)
{
    if (finestra) finestra->Abilita(indice, flag);
}

void GWnd::getClientRect(GRect& rect) const
{
    rect = {0, 0, 0, 0};
    if (finestra) finestra->Pixel(indice, rect.right, rect.bottom);
}

int GWnd::messageBox(const char* text, const char* title, unsigned flags)
{
    return MessageBoxA(hwnd, text, title, flags);
}

HWND GetDlgItem(HWND dialog, int id)
{
    int indice = 0;
    TFinestraDialogo* f = TFinestraDialogo::DaManiglia(dialog, indice);
    if (!f || indice != -1) return nullptr;
    const int i = f->Indice(id);
    return i < 0 ? nullptr : f->Maniglia(i);
}

int EnableWindow(HWND window, int enable)
{
    int indice = 0;
    TFinestraDialogo* f = TFinestraDialogo::DaManiglia(window, indice);
    if (!f) return 0;
    const bool prima = f->Abilitato(indice);
    f->Abilita(indice, enable != 0);
    return prima ? 0 : 1;  // as the platform: nonzero when it was disabled
}
