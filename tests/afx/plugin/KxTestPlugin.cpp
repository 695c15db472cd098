// A framework client DLL that the tests load and unload at run time: its classes must
// be known by name exactly while it is loaded.
#include <afx.h>

class CKxTestPlugin : public CObject {
    DECLARE_DYNCREATE(CKxTestPlugin)
public:
    CKxTestPlugin() = default;
};

IMPLEMENT_DYNCREATE(CKxTestPlugin, CObject)
