// Paths of the pointer for the simulated tablet: a built-in figure, a random
// walk, or a file of "x y button" lines. Each state is shown for one step of
// the player; a press is a state with a button, and it takes a state with
// none before the next press counts (the library turns levels into edges).
#ifndef VELMARIN_PERCORSI_H
#define VELMARIN_PERCORSI_H

#include <cstdint>
#include <istream>
#include <string>
#include <vector>

#include "sim/stato_puntatore.h"

using TPercorso = std::vector<TStatoPuntatore>;

// A square from (origine, origine) with sides of `lato` counts, walked
// anticlockwise in steps of a tenth of a side; at each corner the pointer
// rests and button 1 is pressed and released.
TPercorso Figura(std::int32_t origine = 1000, std::int32_t lato = 8000);

// The nodes of a grid of `lato` by `lato` squares of `passo` counts from
// (origine, origine), column by column: x outer, y inner, the order in which
// a grid calibration asks for them when East runs along x. The pointer
// glides from node to node and presses button 1 on each.
TPercorso FiguraGriglia(int lato = 2, std::int32_t origine = 2000, std::int32_t passo = 3000);

// `passi` steps of at most `salto` counts each way from the middle of a
// 0..`lato` square, kept inside it; now and then a button 1 to 4 is pressed.
// The same seed gives the same walk.
TPercorso PasseggiataCasuale(unsigned seme, int passi, std::int32_t lato = 10000, std::int32_t salto = 60);

// Reads "x y button" lines; blank lines and lines starting with '#' are
// skipped. On a bad line returns false with its number and the reason in
// `errore`, and `percorso` holds what came before it.
bool LeggiPercorso(std::istream& in, TPercorso& percorso, std::string& errore);

// A press of `bottone` at (x, y) as a person makes it: the pointer arrives,
// the button goes down for four steps and comes up again. A reader that
// falls behind decodes only the first gather of what it reads at once, so a
// press held longer survives a loaded machine.
TPercorso PressioneBottone(std::int32_t x, std::int32_t y, int bottone);

#endif
