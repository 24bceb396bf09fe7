// What each platform itself does for the services of winui.h: a message box
// and a beep nobody intercepted, the cursor, a text of the module's string
// table, the tick and a wait. winui.cpp puts the library's handlers in front
// of them; sistema_posix.cpp and sistema_win32.cpp implement them.
//
// Plain types only: the Windows side includes <windows.h>, whose own
// declarations carry the names of winui.h, so it cannot see that header.
#ifndef VELMARIN_SISTEMA_H
#define VELMARIN_SISTEMA_H

#include <cstdint>

// A box with UTF-8 texts; returns the button chosen.
int SistemaMessaggio(void* owner, const char* testo, const char* titolo, unsigned flags);
void SistemaBeep(unsigned tipo);

// `nome` is a name or a resource number (MAKEINTRESOURCE); a null instance
// takes the system's cursors.
const void* SistemaCaricaCursore(void* istanza, const char* nome);
const void* SistemaImpostaCursore(const void* cursore);  // returns the previous one
const void* SistemaCursoreCorrente();

// The text `id` of the string table of module `istanza`, in UTF-8, cut to
// size - 1 bytes and ended by a null; its length, 0 when the id is unknown.
int SistemaStringa(void* istanza, unsigned id, char* buf, int size);

std::uint32_t SistemaTick();
void SistemaAttesa(std::uint32_t ms);

#endif
