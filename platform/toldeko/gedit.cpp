#include "gedit.h"

#include <cstring>

GEdit::GEdit(GWnd* parent, int id, GValidator* validator, int, int, int)
    : GEdit(std::unique_ptr<GValidator>(validator), parent, id)
{
}

GEdit::GEdit(std::unique_ptr<GValidator> validator, GWnd* parent, int id)
    : GControl(parent, id, {TTipoElemento::edit}, "GEdit"), validatore(std::move(validator))
{
    const GValidator* v = validatore.get();
    finestra->ImpostaVerifica(indice, [v](const std::string& testo) { return !v || v->IsValidInput(testo); });
}

void GEdit::clear() { setWindowText(""); }

int GEdit::getText(char* buffer, int size) const
{
    if (!buffer || size <= 0) return 0;
    const std::string testo = finestra->Testo(indice);
    const std::size_t n = std::min(testo.size(), static_cast<std::size_t>(size - 1));
    std::memcpy(buffer, testo.data(), n);
    buffer[n] = '\0';
    return static_cast<int>(n);
}

void GEdit::InputTesto(const std::string& testo)
{
    std::string attuale = finestra->Testo(indice);
    for (char c : testo) {
        if (c == '\b') {  // Backspace erases the last character, as in an edit control
            if (!attuale.empty()) attuale.pop_back();
            continue;
        }
        const std::string prova = attuale + c;
        if (!validatore || validatore->IsValidInput(prova)) attuale = prova;
    }
    finestra->ImpostaTesto(indice, attuale);
}
