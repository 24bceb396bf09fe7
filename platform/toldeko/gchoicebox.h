// GChoiceBox: a control that offers a list of entries, each with a value
// attached. GComboBox: the drop-down list. Bad indexes answer -1, the
// platform's CB_ERR, and getItemData of no entry (getSelIndex() of a list
// without a selection, say) answers -1 as well.
#ifndef TOLDEKO_GCHOICEBOX_H
#define TOLDEKO_GCHOICEBOX_H

#include <cstdint>

#include "platform/toldeko/gcontrol.h"

class GChoiceBox : public GControl {
public:
    int addString(const char* text);  // the new entry's index
    int setItemData(int index, std::intptr_t value);
    std::intptr_t getItemData(int index) const;
    int getCount() const;
    int getSelIndex() const;  // -1: none
    int setSelIndex(int index);  // -1: none

protected:
    GChoiceBox(GWnd* parent, int id, const char* classe);
};

class GComboBox : public GChoiceBox {
public:
    // The last three arguments keep the toolkit's call shape and are not used.
    GComboBox(GWnd* parent, int id, int = 0, int = 0, int = 0);
};

#endif
