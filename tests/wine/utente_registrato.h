// Records the beeps the library sounds, and answers its message boxes with
// their default button, for the tests of the real dialogs. Plain types: the
// tests include <windows.h>, whose names collide with platform/winui.h's.
#ifndef VELMARIN_TEST_UTENTE_REGISTRATO_H
#define VELMARIN_TEST_UTENTE_REGISTRATO_H

#include <vector>

void RegistraUtente(bool registra);
std::vector<unsigned> BeepRegistrati();

#endif
