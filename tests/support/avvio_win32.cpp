// The test program links the library's objects, not velmarin.dll, so no
// loader calls their entry point: the program calls it as the loader would,
// with its own module, which carries the string table, before any test.
#include <windows.h>

extern "C" BOOL WINAPI DllMain(HINSTANCE istanza, DWORD motivo, LPVOID riservato);

namespace {

const BOOL avviata = DllMain(GetModuleHandleW(nullptr), DLL_PROCESS_ATTACH, nullptr);

}  // namespace
