// Records what the library shows and sounds outside its dialogs (message
// boxes, each answered with its default button, and beeps), for the tests
// of the real dialogs. Plain types: the tests include <windows.h>, whose
// names collide with those of platform/winui.h.
#ifndef VELMARIN_TEST_UTENTE_REGISTRATO_H
#define VELMARIN_TEST_UTENTE_REGISTRATO_H

#include <string>
#include <vector>

void RegistraUtente(bool registra);
std::vector<unsigned> BeepRegistrati();
std::vector<std::string> MessaggiRegistrati();  // their captions

#endif
