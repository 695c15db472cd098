#include "KxUiVersion.h"

DWORD KxUiGetVersion()
{
    return (0u << 24) | (1u << 16) | 0u;
}
