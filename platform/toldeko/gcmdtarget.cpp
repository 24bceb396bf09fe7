#include "gcmdtarget.h"

namespace {

constexpr GFC_MSGMAP_ENTRY nessunaRiga[] = {{0, 0, 0, 0, 0, nullptr}};

const GFC_MSGMAP* NessunaBase() { return nullptr; }

bool IsFine(const GFC_MSGMAP_ENTRY& r) { return r.message == 0 && r.signature == 0 && !r.handler; }

}  // namespace

const GFC_MSGMAP GCmdTarget::messageMap = {&NessunaBase, nessunaRiga};

const GFC_MSGMAP* GCmdTarget::GetMessageMap() const { return &messageMap; }

bool GCmdTarget::OnCommand(unsigned id, unsigned code)
{
    for (const GFC_MSGMAP* mappa = GetMessageMap(); mappa; mappa = mappa->baseMap ? mappa->baseMap() : nullptr) {
        for (const GFC_MSGMAP_ENTRY* r = mappa->entries; r && !IsFine(*r); ++r) {
            if (r->message != WM_COMMAND || r->code != code || id < r->firstId || id > r->lastId) continue;
            if (r->signature != GfcSig_vv || !r->handler) continue;
            (this->*(r->handler))();
            return true;
        }
    }
    return false;
}
