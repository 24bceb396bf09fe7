// GDlg: a modal dialog made from a template of its module.
//
// doModal makes the window, calls setupWindow, runs the modal loop on the
// calling thread and returns the end value. The buttons with id 1 and 2 call
// the virtual OnOK and OnCancel through GDlg's message map. EndDialog, OnOK,
// OnCancel and setDlgItemText may also be called on another thread while the
// loop runs: they act under the window's lock and wake the loop.
//
// The dialog owns its controls: they are made with new in the constructor
// of a derived dialog, bind to the template by id, and are deleted with the
// dialog. Their state lives until the dialog's destructor, so a handler still
// running on another thread after the loop ended finds them in place.
#ifndef TOLDEKO_GDLG_H
#define TOLDEKO_GDLG_H

#include <memory>
#include <vector>

#include "platform/toldeko/finestra_dialogo.h"
#include "platform/toldeko/gwnd.h"

class GControl;
class GThread;  // a thread of the toolkit; the library always passes null

class GDlg : public GWnd {
public:
    // A missing template is an error of the program: std::logic_error. With
    // no module the parent's serves, else the module initialised last.
    GDlg(GWnd* parent, unsigned templateId, GModule* module = nullptr, GThread* thread = nullptr);
    ~GDlg() override;

    int doModal();
    virtual void setupWindow();
    virtual void OnOK();
    virtual void OnCancel();
    void EndDialog(int result);

    const GFC_MSGMAP* GetMessageMap() const override;
    static const GFC_MSGMAP messageMap;

    GWnd* parent() const { return genitore; }
    unsigned templateId() const { return finestra->Modello().id; }

    // For the toolkit's controls.
    TFinestraDialogo& Finestra() { return *finestra; }
    void AggiungiControllo(GControl* controllo);

private:
    void Esegui(const TInput& input);
    GControl* Controllo(int id) const;

    GWnd* genitore;
    std::unique_ptr<TFinestraDialogo> proprietaria;
    std::vector<std::unique_ptr<GControl>> controlli;
};

#endif
