"""The host's callables as the library calls them, on its reader thread:
an exception they raise is reported and never reaches the reader."""

import sys
import threading
import traceback


def richiamabili(**funzioni):
    """TypeError naming the first of the host's functions that is neither
    None nor callable."""
    for nome, f in funzioni.items():
        if f is not None and not callable(f):
            raise TypeError("%s must be callable, not %r" % (nome, f))


def su_errore_standard(eccezione):
    print("velmarin: a callback raised an exception; the reader goes on", file=sys.stderr)
    traceback.print_exception(type(eccezione), eccezione, eccezione.__traceback__, file=sys.stderr)


_richiamo = threading.local()  # set on the reader thread while a callback runs


def in_un_richiamo():
    return getattr(_richiamo, "attivo", False)


def protetto(funzione, nome, riporta):
    def richiamo(_utente, *argomenti):
        _richiamo.attivo = True
        try:
            funzione(*argomenti)
        except Exception as eccezione:  # the reader thread must not meet it
            try:
                riporta(eccezione)
            except Exception:
                su_errore_standard(eccezione)
        finally:
            _richiamo.attivo = False
    richiamo.__name__ = nome
    return richiamo
