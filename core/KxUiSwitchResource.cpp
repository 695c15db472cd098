#include "KxUiSwitchResource.h"
#include <afxwin.h>

KxUiSwitchResource::KxUiSwitchResource() : m_pModuleState(nullptr), m_hPreviousResource(nullptr)
{
    // A constructor reaches this class's override only; derived classes call their own.
    KxUiSwitchResource::setResourceHandle();
}

KxUiSwitchResource::KxUiSwitchResource(HINSTANCE hResource) : m_pModuleState(nullptr), m_hPreviousResource(nullptr)
{
    setResourceHandle(hResource);
}

KxUiSwitchResource::~KxUiSwitchResource()
{
    unsetResourceHandle();
}

void KxUiSwitchResource::setResourceHandle()
{
}

void KxUiSwitchResource::setResourceHandle(HINSTANCE hResource)
{
    if (!hResource)
        return;
    m_pModuleState = AfxGetModuleState();
    m_hPreviousResource = AfxGetResourceHandle();
    AfxSetResourceHandle(hResource);
}

void KxUiSwitchResource::unsetResourceHandle()
{
    if (!m_pModuleState)
        return;
    {
        // Restores the module state that was switched even if another one is current now.
        AFX_MAINTAIN_STATE2 state(m_pModuleState);
        AfxSetResourceHandle(m_hPreviousResource);
    }
    m_pModuleState = nullptr;
}
