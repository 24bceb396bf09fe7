// GCmdTarget: an object that receives commands through its message map.
//
// A class's map (GFC_MSGMAP) is a function that gives the base class's map
// and a table of rows ended by a row of zeros. A command walks the class's
// rows, then its base's, and runs the first row that matches its message,
// notification code and id.
#ifndef TOLDEKO_GCMDTARGET_H
#define TOLDEKO_GCMDTARGET_H

class GCmdTarget;

constexpr unsigned WM_COMMAND = 0x0111;
constexpr unsigned BN_CLICKED = 0;
constexpr unsigned CBN_SELCHANGE = 1;
constexpr unsigned CBN_CLOSEUP = 8;
constexpr unsigned EN_CHANGE = 0x0300;

// Signature 12: a handler with no arguments and no result.
constexpr unsigned GfcSig_vv = 12;

using GFC_PMSG = void (GCmdTarget::*)();

struct GFC_MSGMAP_ENTRY {
    unsigned message;
    unsigned code;
    unsigned firstId;
    unsigned lastId;
    unsigned signature;
    GFC_PMSG handler;
};

struct GFC_MSGMAP {
    const GFC_MSGMAP* (*baseMap)();
    const GFC_MSGMAP_ENTRY* entries;
};

// A handler of a derived class as it stands in a row.
#define GFC_HANDLER(membro) static_cast<GFC_PMSG>(membro)

class GCmdTarget {
public:
    virtual ~GCmdTarget() = default;
    virtual const GFC_MSGMAP* GetMessageMap() const;
    static const GFC_MSGMAP messageMap;

    // Runs the handler of command `code` from control `id`; false when no
    // row takes it.
    bool OnCommand(unsigned id, unsigned code);
};

#endif
