// The few Windows user-interface and timing services the library calls:
// message boxes, beeps, the wait cursor, the string table, the millisecond
// tick and Sleep. On Windows they are the system's own; elsewhere our
// stand-ins (sistema.h tells each). Boxes and beeps go to a pluggable
// handler: by default the platform's (on POSIX a box is written to standard
// error and answered with its default button); tests and front ends install
// their own. All of it may be called from the reader thread too.
#ifndef VELMARIN_WINUI_H
#define VELMARIN_WINUI_H

#include <cstdint>

using HWND = void*;
using HINSTANCE = void*;
using HCURSOR = const void*;

constexpr unsigned MB_OK = 0x00;
constexpr unsigned MB_YESNO = 0x04;
constexpr unsigned MB_ICONQUESTION = 0x20;
constexpr unsigned MB_ICONEXCLAMATION = 0x30;
constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr int IDYES = 6;
constexpr int IDNO = 7;

extern const char* const IDC_WAIT;  // a resource number, as on the platform

// Receives what the library shows and sounds.
class TInterfacciaUtente {
public:
    virtual ~TInterfacciaUtente() = default;
    virtual int messageBox(HWND owner, const char* text, const char* caption, unsigned flags) = 0;
    virtual void beep(unsigned type) = 0;
};

// Installs a handler; null restores the default. The handler must outlive its use.
void ImpostaInterfacciaUtente(TInterfacciaUtente* handler);

int MessageBoxA(HWND owner, const char* text, const char* caption, unsigned flags);
int MessageBeep(unsigned type);

HCURSOR LoadCursorA(HINSTANCE instance, const char* name);
HCURSOR SetCursor(HCURSOR cursor);  // returns the previous cursor
HCURSOR CursoreCorrente();          // the cursor now shown; null is the arrow

// Copies the text `id` of the string table into buf; returns its length, 0
// when the id is unknown.
int LoadStringA(HINSTANCE instance, unsigned id, char* buf, int size);

// The 32-bit millisecond tick, wrapping every 49.7 days. A test may inject
// its own source; null restores the steady clock.
using TSorgenteTick = std::uint32_t (*)();
void ImpostaSorgenteTick(TSorgenteTick sorgente);
std::uint32_t GetTickCount();

void Sleep(std::uint32_t ms);

#endif
