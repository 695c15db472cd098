// KxUiSwitchResource: makes a module the source of resources for a block of code.
#pragma once
#include "KxUiDef.h"

struct AFX_MODULE_STATE;

// While in effect, the current module state loads its resources from the given module;
// the previous resource handle is put back by unsetResourceHandle or the destructor.
//
//     {
//         KxUiSwitchResource use(hLanguageModule);
//         dialog.DoModal();   // its template and strings come from hLanguageModule
//     }
class KXUI_API KxUiSwitchResource {
public:
    // Calls this class's setResourceHandle(), which does nothing: a derived class calls its
    // own override from its constructor to choose a module.
    KxUiSwitchResource();
    // Switches to `hResource`; a null handle changes nothing.
    explicit KxUiSwitchResource(HINSTANCE hResource);
    KxUiSwitchResource(const KxUiSwitchResource& other) = default;
    KxUiSwitchResource& operator=(const KxUiSwitchResource& other) = default;
    virtual ~KxUiSwitchResource();

    // Remembers the current module state and its resource handle, then makes `hResource`
    // its resource handle. Nothing for a null handle.
    void setResourceHandle(HINSTANCE hResource);
    // Puts the remembered handle back into the remembered module state, then forgets it.
    void unsetResourceHandle();

protected:
    virtual void setResourceHandle();

    AFX_MODULE_STATE* m_pModuleState;   // whose handle was replaced; null when none
    HINSTANCE m_hPreviousResource;      // its resource handle before
};
