#include "KxTestStateDll.h"

CString KxTestDllLoadString(UINT nID)
{
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    CString s;
    s.LoadString(nID);
    return s;
}

CString KxTestDllLoadStringUnmanaged(UINT nID)
{
    CString s;
    s.LoadString(nID);
    return s;
}

HINSTANCE KxTestDllInstance()
{
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    return AfxGetInstanceHandle();
}

HINSTANCE KxTestDllResourceHandle()
{
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    return AfxGetResourceHandle();
}

CWinApp* KxTestDllApp()
{
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    return AfxGetApp();
}

AFX_MODULE_STATE* KxTestDllStaticState()
{
    return AfxGetStaticModuleState();
}

CString KxTestDllCallBack(CString (*callback)())
{
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    return callback();
}

void KxTestDllThrow()
{
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    AfxThrowInvalidArgException();
}
