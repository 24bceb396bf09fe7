// CDigit's end: the tables go with the object.
#include "digit.h"

#include "tablet/tabelle.h"

CDigit::~CDigit()
{
    LiberaTabella(coefCelle);
    LiberaTabella(angoliX);
    LiberaTabella(angoliY);
}
