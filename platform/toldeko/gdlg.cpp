#include "gdlg.h"

#include <stdexcept>
#include <string>

#include "platform/toldeko/backend_dialoghi.h"
#include "platform/toldeko/gcontrol.h"

namespace {

GModule& ModuloDi(GWnd* parent, GModule* module)
{
    if (module) return *module;
    if (parent && parent->module()) return *parent->module();
    return GModule::principale();
}

const TModelloDialogo& CercaModello(GModule& module, unsigned id)
{
    const TModelloDialogo* m = module.findTemplate(id);
    if (!m) throw std::logic_error("modello di dialogo " + std::to_string(id) + " inesistente");
    return *m;
}

constexpr GFC_MSGMAP_ENTRY righe[] = {
    {WM_COMMAND, BN_CLICKED, IDOK, IDOK, GfcSig_vv, GFC_HANDLER(&GDlg::OnOK)},
    {WM_COMMAND, BN_CLICKED, IDCANCEL, IDCANCEL, GfcSig_vv, GFC_HANDLER(&GDlg::OnCancel)},
    {0, 0, 0, 0, 0, nullptr},
};

const GFC_MSGMAP* MappaBase() { return &GCmdTarget::messageMap; }

}  // namespace

const GFC_MSGMAP GDlg::messageMap = {&MappaBase, righe};

const GFC_MSGMAP* GDlg::GetMessageMap() const { return &messageMap; }

GDlg::GDlg(GWnd* parent, unsigned templateId, GModule* module, GThread*)
    : genitore(parent)
{
    GModule& m = ModuloDi(parent, module);
    proprietaria = std::make_unique<TFinestraDialogo>(CercaModello(m, templateId));
    Lega(proprietaria.get(), -1, &m);
}

GDlg::~GDlg() = default;

void GDlg::AggiungiControllo(GControl* controllo) { controlli.emplace_back(controllo); }

GControl* GDlg::Controllo(int id) const
{
    for (const auto& c : controlli)
        if (c->id() == id) return c.get();
    return nullptr;
}

int GDlg::doModal()
{
    TFinestraDialogo& f = *proprietaria;
    TBackendDialoghi& backend = BackendDialoghi();
    f.Apri();
    backend.Creato(f);
    bool aperto = false;
    try {
        setupWindow();
        backend.Aperto(f);
        aperto = true;
        TInput input;
        while (f.ProssimoInput(input, backend)) Esegui(input);
    } catch (...) {
        if (aperto) backend.Chiuso(f);
        else backend.Annullato(f);
        throw;
    }
    backend.Chiuso(f);
    return f.ValoreFine();
}

void GDlg::setupWindow() {}

void GDlg::OnOK() { EndDialog(IDOK); }

void GDlg::OnCancel() { EndDialog(IDCANCEL); }

void GDlg::EndDialog(int result) { proprietaria->Termina(result); }

// What the platform makes of each input. Disabled controls take none.
void GDlg::Esegui(const TInput& input)
{
    TFinestraDialogo& f = *proprietaria;
    const int i = f.Indice(input.id);
    const bool vivo = i >= 0 && f.Abilitato(i);
    const unsigned id = static_cast<unsigned>(input.id);
    switch (input.tipo) {
    case TTipoInput::digita:
        if (!vivo || f.Tipo(i) != TTipoElemento::edit) return;
        if (GControl* c = Controllo(input.id))
            c->InputTesto(input.testo);
        else
            f.ImpostaTesto(i, f.Testo(i) + input.testo);
        OnCommand(id, EN_CHANGE);
        return;
    case TTipoInput::testo:
        // An edit of the system holds what was typed already; a text its
        // validator refuses is put back as it was.
        if (!vivo || f.Tipo(i) != TTipoElemento::edit) return;
        if (!f.Ammesso(i, input.testo)) {
            f.ImpostaTesto(i, f.Testo(i));
            return;
        }
        f.ImpostaTesto(i, input.testo);
        OnCommand(id, EN_CHANGE);
        return;
    case TTipoInput::clic: {
        if (!vivo) return;
        const TTipoElemento t = f.Tipo(i);
        if (t == TTipoElemento::radio) f.ScegliRadio(i);
        if (t == TTipoElemento::radio || t == TTipoElemento::pulsante || t == TTipoElemento::predefinito)
            OnCommand(id, BN_CLICKED);
        return;
    }
    case TTipoInput::scegli:
        if (!vivo || f.Tipo(i) != TTipoElemento::combo) return;
        if (input.indice < 0 || input.indice >= f.NumVoci(i)) return;  // no such entry to choose
        f.ImpostaSelezione(i, input.indice);
        OnCommand(id, CBN_CLOSEUP);
        OnCommand(id, CBN_SELCHANGE);
        return;
    case TTipoInput::invio: {
        // The default button; with none the platform raises id 1 all the same.
        const TStatoDialogo s = f.Fotografia();
        for (const TStatoElemento& e : s.elementi) {
            if (e.tipo != TTipoElemento::predefinito) continue;
            if (e.abilitato) OnCommand(static_cast<unsigned>(e.id), BN_CLICKED);
            return;
        }
        OnCommand(IDOK, BN_CLICKED);
        return;
    }
    case TTipoInput::esc:
        OnCommand(IDCANCEL, BN_CLICKED);
        return;
    case TTipoInput::comando:
        OnCommand(id, input.codice);
        return;
    }
}
