// The module state of the module this file is linked into.
#include "afxwin.h"

// Provided by the linker: the start of this module's image, i.e. its instance handle.
extern "C" IMAGE_DOS_HEADER __ImageBase;

AFX_MODULE_STATE* AFXAPI AfxGetStaticModuleState()
{
    HINSTANCE self = reinterpret_cast<HINSTANCE>(&__ImageBase);
    // The executable's state is the process's application module state.
    if (self == ::GetModuleHandleW(nullptr))
        return AfxGetAppModuleState();
    static AFX_MODULE_STATE state{self, self, nullptr, nullptr, TRUE};
    return &state;
}
