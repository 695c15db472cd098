// CString::LoadString from the current module state's resources.
#include "afximpl.h"

BOOL CString::LoadString(UINT nID)
{
    return LoadString(AfxGetResourceHandle(), nID);
}
