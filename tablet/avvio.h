// The library's start, called once by its entry point with its instance
// handle: it initialises the library's GModule and keeps the handle for the
// texts. Plain types only, so that the Windows entry point, which sees
// <windows.h>, can include it.
#ifndef VELMARIN_AVVIO_H
#define VELMARIN_AVVIO_H

void AvviaLibreria(void* istanza);

#endif
