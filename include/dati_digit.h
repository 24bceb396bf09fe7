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
    int16_t porta;        /* COM port number, 1..4 */
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

VELMARIN_FORMA_DATI(sizeof(TDataDigit) == 52, velmarin_forma_dimensione);
VELMARIN_FORMA_DATI(sizeof(bool) == 1, velmarin_forma_bool);
VELMARIN_FORMA_DATI(offsetof(TDataDigit, funzBott) == 18, velmarin_forma_funzbott);
VELMARIN_FORMA_DATI(offsetof(TDataDigit, limitiDefiniti) == 34, velmarin_forma_limiti);
VELMARIN_FORMA_DATI(offsetof(TDataDigit, xMin) == 36, velmarin_forma_xmin);

#undef VELMARIN_FORMA_DATI

#endif
