// Entry point of a program whose application is a global CWinApp-derived object.
#include "afxwin.h"

extern "C" int WINAPI wWinMain(HINSTANCE hInstance, HINSTANCE hPrevInstance, LPWSTR lpCmdLine, int nCmdShow)
{
    return AfxWinMain(hInstance, hPrevInstance, lpCmdLine, nCmdShow);
}
