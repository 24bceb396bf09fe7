// Off Windows no system shows the toolkit's dialogs: with no backend
// installed, each is cancelled.
#include "platform/toldeko/backend_dialoghi.h"

TBackendDialoghi& BackendPiattaforma() { return BackendAnnulla(); }
