// The test program links the library's objects: it calls their entry point, with its string table, as a loader would.
#include <windows.h>

extern "C" BOOL WINAPI DllMain(HINSTANCE istanza, DWORD motivo, LPVOID riservato);

namespace {

const BOOL avviata = DllMain(GetModuleHandleW(nullptr), DLL_PROCESS_ATTACH, nullptr);

}  // namespace
