// Placeholders for the text formats until their decoders land: every gather
// of these formats is rejected.
#include "digit_link.h"

int DecodificaSummaAscii(TDigitLink&) { return 0; }
int DecodificaCalcomp2000(TDigitLink&) { return 0; }
int DecodificaOce(TDigitLink&) { return 0; }
int DecodificaRolley(TDigitLink&) { return 0; }
int DecodificaCalcomp9500(TDigitLink&) { return 0; }
