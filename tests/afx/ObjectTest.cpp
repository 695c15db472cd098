// Run-time class information: hierarchy checks and creation by name across modules.
#include <cstring>
#include <memory>
#include "crossdll/KxTestCrossDll.h"

// Classes of this executable (global: the IMPLEMENT_ macros define namespace-scope objects).
class CTestTriangle : public CKxTestShape {
    DECLARE_DYNCREATE(CTestTriangle)
public:
    CTestTriangle() { m_nSides = 3; }
};
IMPLEMENT_DYNCREATE(CTestTriangle, CKxTestShape)

class CTestOnlyDynamic : public CObject {
    DECLARE_DYNAMIC(CTestOnlyDynamic)
public:
    CTestOnlyDynamic() = default;
};
IMPLEMENT_DYNAMIC(CTestOnlyDynamic, CObject)

class CTestThrowsOnCreate : public CObject {
    DECLARE_DYNCREATE(CTestThrowsOnCreate)
public:
    CTestThrowsOnCreate() { AfxThrowNotSupportedException(); }
};
IMPLEMENT_DYNCREATE(CTestThrowsOnCreate, CObject)

TEST(Object, ClassInformationIsSharedBetweenModules)
{
    // A class of the test DLL, created here.
    std::unique_ptr<CKxTestShape> shape(new CKxTestShape);
    CRuntimeClass* cls = shape->GetRuntimeClass();
    EXPECT_EQ(RUNTIME_CLASS(CKxTestShape), cls);
    EXPECT_STREQ("CKxTestShape", cls->m_lpszClassName);
    EXPECT_EQ(static_cast<int>(sizeof(CKxTestShape)), cls->m_nObjectSize);
    EXPECT_EQ(RUNTIME_CLASS(CObject), cls->m_pfnGetBaseClass());
    EXPECT_TRUE(shape->IsKindOf(RUNTIME_CLASS(CObject)));
    EXPECT_FALSE(shape->IsKindOf(RUNTIME_CLASS(CException)));
    EXPECT_FALSE(shape->IsSerializable());

    // A class of this executable derived from it, checked inside the DLL.
    CTestTriangle tri;
    EXPECT_TRUE(tri.IsKindOf(RUNTIME_CLASS(CKxTestShape)));
    EXPECT_TRUE(KxTestIsShape(&tri));
    EXPECT_FALSE(KxTestIsException(&tri));
    EXPECT_TRUE(KxTestIsShape(shape.get()));
    EXPECT_FALSE(RUNTIME_CLASS(CKxTestShape)->IsDerivedFrom(RUNTIME_CLASS(CTestTriangle)));
    EXPECT_FALSE(RUNTIME_CLASS(CObject)->IsDerivedFrom(nullptr));

    // A class of the framework DLL, thrown there and checked here and in the test DLL.
    try {
        AfxThrowNotSupportedException();
    } catch (CException* e) {
        EXPECT_EQ(RUNTIME_CLASS(CNotSupportedException), e->GetRuntimeClass());
        EXPECT_TRUE(e->IsKindOf(RUNTIME_CLASS(CSimpleException)));
        EXPECT_FALSE(e->IsKindOf(RUNTIME_CLASS(CFileException)));
        EXPECT_TRUE(KxTestIsException(e));
        EXPECT_FALSE(KxTestIsShape(e));
        e->Delete();
    }
}

TEST(Object, CreatesObjectsByNameFromEveryModule)
{
    std::unique_ptr<CObject> a(CRuntimeClass::CreateObject("CKxTestShape"));
    ASSERT_NE(nullptr, a);
    EXPECT_EQ(RUNTIME_CLASS(CKxTestShape), a->GetRuntimeClass());

    // The test DLL creates a class of this executable by name.
    std::unique_ptr<CObject> b(KxTestCreateByName(L"CTestTriangle"));
    ASSERT_NE(nullptr, b);
    ASSERT_TRUE(b->IsKindOf(RUNTIME_CLASS(CTestTriangle)));
    EXPECT_EQ(3, static_cast<CTestTriangle*>(b.get())->Sides());

    EXPECT_EQ(RUNTIME_CLASS(CObject), CRuntimeClass::FromName("CObject"));
    EXPECT_EQ(RUNTIME_CLASS(CInvalidArgException), CRuntimeClass::FromName(L"CInvalidArgException"));
    EXPECT_EQ(nullptr, CRuntimeClass::FromName("CTestNoSuchClass"));
    EXPECT_EQ(nullptr, CRuntimeClass::FromName(L"CTest\u00c9"));
    EXPECT_EQ(nullptr, CRuntimeClass::FromName(static_cast<LPCSTR>(nullptr)));
    EXPECT_EQ(nullptr, CRuntimeClass::FromName("ckxtestshape"));  // names are case-sensitive

    // Classes that cannot be created give no object.
    EXPECT_EQ(RUNTIME_CLASS(CTestOnlyDynamic), CRuntimeClass::FromName("CTestOnlyDynamic"));
    EXPECT_EQ(nullptr, RUNTIME_CLASS(CTestOnlyDynamic)->CreateObject());
    EXPECT_EQ(nullptr, CRuntimeClass::CreateObject(L"CObject"));
    EXPECT_EQ(nullptr, CRuntimeClass::CreateObject(L"CTestThrowsOnCreate"));
}

TEST(Object, ClassesOfAnUnloadedModuleAreForgotten)
{
    EXPECT_EQ(nullptr, CRuntimeClass::FromName("CKxTestPlugin"));
    HMODULE plugin = LoadLibraryW(L"KxTestPlugin.dll");
    ASSERT_NE(nullptr, plugin);
    CRuntimeClass* cls = CRuntimeClass::FromName("CKxTestPlugin");
    ASSERT_NE(nullptr, cls);
    CObject* p = cls->CreateObject();
    ASSERT_NE(nullptr, p);
    EXPECT_EQ(cls, p->GetRuntimeClass());
    delete p;
    FreeLibrary(plugin);
    EXPECT_EQ(nullptr, CRuntimeClass::FromName("CKxTestPlugin"));
    // The rest of the list is intact.
    EXPECT_EQ(RUNTIME_CLASS(CTestTriangle), CRuntimeClass::FromName("CTestTriangle"));
}

TEST(Object, DowncastsCheckTheClass)
{
    CTestTriangle tri;
    CTestOnlyDynamic other;
    CObject* pTri = &tri;
    CObject* pOther = &other;
    EXPECT_EQ(&tri, DYNAMIC_DOWNCAST(CKxTestShape, pTri));
    EXPECT_EQ(nullptr, DYNAMIC_DOWNCAST(CKxTestShape, pOther));
    EXPECT_EQ(nullptr, DYNAMIC_DOWNCAST(CKxTestShape, static_cast<CObject*>(nullptr)));
    EXPECT_EQ(&tri, STATIC_DOWNCAST(CTestTriangle, pTri));
}
