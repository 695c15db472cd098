// Uses the framework and the library through the installed SDK only.
#include <cstdio>
#include <afx.h>
#include <KxUiVersion.h>

int main()
{
    int ok = 0;
    try {
        AfxThrowInvalidArgException();
    } catch (CInvalidArgException* e) {
        e->Delete();
        ok = 1;
    }
    const DWORD v = KxUiGetVersion();
    std::printf("KxUi version %lu.%lu\n", (v >> 24) & 0xff, (v >> 16) & 0xff);
    if (ok && v != 0)
        std::printf("KxUi SDK consumer: ok\n");
    return ok ? 0 : 1;
}
