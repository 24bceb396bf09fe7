/* velmarin: TDataDigit, the record that says which tablet is attached and
 * how. Declared once, in a form that C (C99 and later) and C++ both read,
 * for digit.h and for the C interface velmarin.h. A plain record: the host
 * stores it and always copies it whole. Field order and widths are part of
 * the interface, and both languages check them when they read this file. */
#ifndef VELMARIN_DATI_DIGIT_H
#define VELMARIN_DATI_DIGIT_H

#include <stddef.h>
#include <stdint.h>
#ifndef __cplusplus
#include <stdbool.h>
#endif

typedef struct TDataDigit {
    int16_t tipo;         /* model: row of the catalogue, 0 = no tablet */
    int16_t porta;        /* COM port number, 1..255 (the dialogs offer 1..4) */
    int16_t velocita;     /* 4800, 9600, 19200 */
    int16_t parita;       /* 'N', 'E', 'O' */
    int16_t bitDati;      /* 7, 8 */
    int16_t bitStop;      /* 1, 2 */
    int16_t reset;        /* 1 no, 2 yes */
    int16_t risoluzione;  /* 1.. the model's count of resolutions */
    int16_t numBottoni;   /* 4, 16 */
    uint8_t funzBott[16]; /* function code per button, button 1 first */
    bool limitiDefiniti;  /* the four limits below were digitized */
    int32_t xMin;
    int32_t yMin;
    int32_t xMax;
    int32_t yMax;
} TDataDigit;

/* C11 and C++ say it with a static assertion; C99 with an array whose size
 * is negative when the condition fails. */
#if defined(__cplusplus)
#define VELMARIN_FORMA_DATI(condizione, nome) static_assert(condizione, "TDataDigit keeps its exported layout")
#elif defined(__STDC_VERSION__) && __STDC_VERSION__ >= 201112L
#define VELMARIN_FORMA_DATI(condizione, nome) _Static_assert(condizione, "TDataDigit keeps its exported layout")
#else
#define VELMARIN_FORMA_DATI(condizione, nome) typedef char nome[(condizione) ? 1 : -1]
#endif

/* The layout a host built by another compiler expects, on 32-bit and on
 * 64-bit Windows alike: MSVC (default packing /Zp8), Delphi ({$A8}, bool as
 * Boolean) and .NET (LayoutKind.Sequential, Pack 0) each put a field at the
 * next multiple of its own size, and a record's size at a multiple of its
 * widest field. No field is wider than 4 bytes and none is a pointer, so
 * i686 and x86_64 agree: nine int16_t at 0..16, the sixteen button codes at
 * 18, the bool at 34 and one byte of padding, the four limits at 36, 40, 44
 * and 48; 52 bytes. */
VELMARIN_FORMA_DATI(sizeof(TDataDigit) == 52, velmarin_forma_dimensione);
VELMARIN_FORMA_DATI(sizeof(bool) == 1, velmarin_forma_bool);
VELMARIN_FORMA_DATI(offsetof(TDataDigit, tipo) == 0, velmarin_forma_tipo);
VELMARIN_FORMA_DATI(offsetof(TDataDigit, porta) == 2, velmarin_forma_porta);
VELMARIN_FORMA_DATI(offsetof(TDataDigit, velocita) == 4, velmarin_forma_velocita);
VELMARIN_FORMA_DATI(offsetof(TDataDigit, parita) == 6, velmarin_forma_parita);
VELMARIN_FORMA_DATI(offsetof(TDataDigit, bitDati) == 8, velmarin_forma_bitdati);
VELMARIN_FORMA_DATI(offsetof(TDataDigit, bitStop) == 10, velmarin_forma_bitstop);
VELMARIN_FORMA_DATI(offsetof(TDataDigit, reset) == 12, velmarin_forma_reset);
VELMARIN_FORMA_DATI(offsetof(TDataDigit, risoluzione) == 14, velmarin_forma_risoluzione);
VELMARIN_FORMA_DATI(offsetof(TDataDigit, numBottoni) == 16, velmarin_forma_numbottoni);
VELMARIN_FORMA_DATI(offsetof(TDataDigit, funzBott) == 18, velmarin_forma_funzbott);
VELMARIN_FORMA_DATI(offsetof(TDataDigit, limitiDefiniti) == 34, velmarin_forma_limiti);
VELMARIN_FORMA_DATI(offsetof(TDataDigit, xMin) == 36, velmarin_forma_xmin);
VELMARIN_FORMA_DATI(offsetof(TDataDigit, yMin) == 40, velmarin_forma_ymin);
VELMARIN_FORMA_DATI(offsetof(TDataDigit, xMax) == 44, velmarin_forma_xmax);
VELMARIN_FORMA_DATI(offsetof(TDataDigit, yMax) == 48, velmarin_forma_ymax);

#undef VELMARIN_FORMA_DATI

#endif
