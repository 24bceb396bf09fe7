// GEdit: a one-line entry, with a validator that filters what is typed.
#ifndef TOLDEKO_GEDIT_H
#define TOLDEKO_GEDIT_H

#include <memory>

#include "platform/toldeko/gcontrol.h"
#include "platform/toldeko/gvalidator.h"

class GEdit : public GControl {
public:
    // The edit owns `validator` (null: everything passes), also when the
    // binding fails. The last three arguments keep the toolkit's call shape
    // and are not used.
    GEdit(GWnd* parent, int id, GValidator* validator, int = 0, int = 0, int = 0);

    void clear();
    // Copies at most size - 1 characters and a terminating zero into buffer;
    // returns the number of characters copied.
    int getText(char* buffer, int size) const;

    void InputTesto(const std::string& testo) override;

private:
    GEdit(std::unique_ptr<GValidator> validator, GWnd* parent, int id);
    std::unique_ptr<GValidator> validatore;
};

#endif
