// Switching the resource module of the current module state for a block of code.
#include "KxUiSwitchResource.h"
#include "KxTestLang.h"
#include <afxwin.h>

namespace {

class SwitchResource : public testing::Test {
protected:
    void SetUp() override
    {
        m_fr = LoadLibraryW(L"KxTestU_fr_FR.kxx");
        m_de = LoadLibraryW(L"KxTestU_de_DE.kxx");
        ASSERT_NE(nullptr, m_fr);
        ASSERT_NE(nullptr, m_de);
        m_before = AfxGetResourceHandle();
    }
    void TearDown() override
    {
        AfxSetResourceHandle(m_before);
        FreeLibrary(m_fr);
        FreeLibrary(m_de);
    }

    // The greeting as the framework loads it: from the current resource handle.
    static CString greeting()
    {
        CString text;
        text.LoadString(IDS_TEST_GREETING);
        return text;
    }

    HMODULE m_fr = nullptr;
    HMODULE m_de = nullptr;
    HINSTANCE m_before = nullptr;
};

// Chooses its module in its own override, as derived switches do.
class GermanResources : public KxUiSwitchResource {
public:
    explicit GermanResources(HINSTANCE de) : m_hGerman(de) { setResourceHandle(); }

protected:
    void setResourceHandle() override { KxUiSwitchResource::setResourceHandle(m_hGerman); }
    HINSTANCE m_hGerman;
};

} // namespace

TEST_F(SwitchResource, NestedScopesPutEachPreviousHandleBack)
{
    {
        KxUiSwitchResource french(m_fr);
        EXPECT_EQ(m_fr, AfxGetResourceHandle());
        EXPECT_STREQ(L"Bonjour", greeting());
        {
            KxUiSwitchResource german(m_de);
            EXPECT_STREQ(L"Guten Tag", greeting());
        }
        EXPECT_STREQ(L"Bonjour", greeting());
    }
    EXPECT_EQ(m_before, AfxGetResourceHandle());
}

TEST_F(SwitchResource, NullHandleChangesAndRestoresNothing)
{
    {
        KxUiSwitchResource none(nullptr);
        KxUiSwitchResource base;  // the base class chooses no module
        EXPECT_EQ(m_before, AfxGetResourceHandle());
        AfxSetResourceHandle(m_de);  // changed by someone else meanwhile
    }
    EXPECT_EQ(m_de, AfxGetResourceHandle());
}

TEST_F(SwitchResource, UnsetRestoresOnceAndForgets)
{
    {
        KxUiSwitchResource french(m_fr);
        french.unsetResourceHandle();
        EXPECT_EQ(m_before, AfxGetResourceHandle());
        AfxSetResourceHandle(m_de);
        french.unsetResourceHandle();  // nothing remembered any more
        EXPECT_EQ(m_de, AfxGetResourceHandle());
    }
    EXPECT_EQ(m_de, AfxGetResourceHandle());
}

TEST_F(SwitchResource, DerivedClassChoosesTheModule)
{
    {
        GermanResources german(m_de);
        EXPECT_STREQ(L"Guten Tag", greeting());
    }
    EXPECT_EQ(m_before, AfxGetResourceHandle());
}

TEST_F(SwitchResource, RestoresTheModuleStateItChangedWhicheverIsCurrent)
{
    AFX_MODULE_STATE* app = AfxGetModuleState();
    AFX_MODULE_STATE other = {GetModuleHandleW(nullptr), m_de, nullptr, nullptr, TRUE};
    KxUiSwitchResource* french = new KxUiSwitchResource(m_fr);  // on the application's state
    {
        AFX_MAINTAIN_STATE2 elsewhere(&other);
        EXPECT_EQ(m_de, AfxGetResourceHandle());
        delete french;  // undone while another module state is current
        EXPECT_EQ(&other, AfxGetModuleState());
        EXPECT_EQ(m_de, other.m_hCurrentResourceHandle);
    }
    EXPECT_EQ(app, AfxGetModuleState());
    EXPECT_EQ(m_before, AfxGetResourceHandle());
}
