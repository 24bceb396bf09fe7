// The sample host's window class, its menu commands and its list, which a
// program that drives the host through window messages names too.
#ifndef VELMARIN_ESEMPIO_COMANDI_H
#define VELMARIN_ESEMPIO_COMANDI_H

#define ESEMPIO_CLASSE L"VelmarinEsempio"

#define IDM_CONFIGURA 101  // choose and set up the tablet
#define IDM_PUNTI 102      // calibrate by points
#define IDM_GRIGLIA 103    // calibrate by grid
#define IDM_ASCOLTA 104    // listen to the tablet again
#define IDM_FERMA 105      // stop listening
#define IDM_ESCI 106

#define IDC_PRESSIONI 200  // the list of the last presses

#endif
