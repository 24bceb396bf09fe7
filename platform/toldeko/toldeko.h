// The dialog toolkit: windows, dialogs with their modal loop, controls bound
// to templates, validators, the module, and the backends that show dialogs.
#ifndef TOLDEKO_TOLDEKO_H
#define TOLDEKO_TOLDEKO_H

#include "platform/toldeko/backend_dialoghi.h"
#include "platform/toldeko/disegno_testo.h"
#include "platform/toldeko/gbutton.h"
#include "platform/toldeko/gcharset.h"
#include "platform/toldeko/gchoicebox.h"
#include "platform/toldeko/gcmdtarget.h"
#include "platform/toldeko/gcontrol.h"
#include "platform/toldeko/gdlg.h"
#include "platform/toldeko/gedit.h"
#include "platform/toldeko/gmodule.h"
#include "platform/toldeko/gstatic.h"
#include "platform/toldeko/gvalidator.h"
#include "platform/toldeko/gwnd.h"
#include "platform/toldeko/stato_dialogo.h"

#endif
