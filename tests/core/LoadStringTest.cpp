// Resource modules found by name, lazy strings, patterns and comparison.
#include "KxUiLoadString.h"
#include "KxUiRes.h"
#include "KxTestLang.h"
#include <string>

namespace {

// A language library loaded for the length of a test.
class LoadedModule {
public:
    explicit LoadedModule(const wchar_t* name) : m_module(LoadLibraryW(name)) {}
    ~LoadedModule()
    {
        if (m_module)
            FreeLibrary(m_module);
    }
    HMODULE get() const { return m_module; }

private:
    HMODULE m_module;
};

// A string of a given module, as a host would derive for its own language library.
class ModuleString : public KxUiLoadString {
public:
    ModuleString(HINSTANCE module, UINT id) : KxUiLoadString(id), m_module(module) {}
    HINSTANCE getHINSTANCE() const override { return m_module; }
    const CString& cached() const { return m_strText; }

private:
    HINSTANCE m_module;
};

class LibraryString : public KxUiLoadStringWndRc {
public:
    using KxUiLoadStringWndRc::KxUiLoadStringWndRc;
    const CString& cached() const { return m_strText; }
};

std::wstring moduleDirectory(HMODULE module)
{
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(module, path, MAX_PATH);
    std::wstring text(path);
    return text.substr(0, text.rfind(L'\\') + 1);
}

HMODULE library() { return GetModuleHandleW(L"KxUiDllU.dll"); }

} // namespace

TEST(ResourceStrings, LibraryStringsComeFromItsOwnModuleLazily)
{
    LibraryString language(IDS_KXUI_LANGUAGE);
    EXPECT_EQ(library(), language.getHINSTANCE());
    EXPECT_TRUE(language.cached().IsEmpty());
    EXPECT_STREQ(L"English", language.loadString());
    EXPECT_STREQ(L"English", static_cast<const wchar_t*>(language));
    EXPECT_EQ(KxUi::_getResourceHandle(), library());

    // setId forgets the text; loadString(id) takes the new one.
    language.setId(IDS_KXUI_VERSION);
    EXPECT_TRUE(language.cached().IsEmpty());
    EXPECT_EQ(UINT(IDS_KXUI_VERSION), language.getId());
    EXPECT_STREQ(L"KxUi user-interface library", language.loadString(IDS_KXUI_LIBRARY));

    EXPECT_STREQ(L"KxUi 0.1", KxUiLoadStringWndRc::loadStringStatic(IDS_KXUI_VERSION));
    EXPECT_TRUE(KxUiLoadStringWndRc::loadStringStatic(9999).IsEmpty());
    EXPECT_TRUE(KxUiLoadStringWndRc::loadStringStatic(0).IsEmpty());

    // A copy carries identifier and text.
    LibraryString copy(language);
    EXPECT_EQ(UINT(IDS_KXUI_LIBRARY), copy.getId());
    EXPECT_STREQ(L"KxUi user-interface library", copy.cached());
}

TEST(ResourceStrings, FormatPatterns)
{
    LibraryString text;
    EXPECT_STREQ(L"English and ", text.format(L"%t and %t, then %t", IDS_KXUI_LANGUAGE, 0, IDS_KXUI_VERSION));
    EXPECT_STREQ(L"100", text.format(L"100%"));
    EXPECT_STREQ(L"%x", text.format(L"%x"));
    EXPECT_STREQ(L"%d items", text.format(L"%d items"));
    // "%%" copies one "%" and the second starts a new directive.
    EXPECT_STREQ(L"50%English", text.format(L"50%%t", IDS_KXUI_LANGUAGE));
    // A missing string adds nothing and the pattern goes on.
    EXPECT_STREQ(L"[] KxUi 0.1", text.format(L"[%t] %t", 9999, IDS_KXUI_VERSION));
    EXPECT_STREQ(L"", text.format(L"%t", 0));
    EXPECT_STREQ(L"", text.format(nullptr));

    // The built text is the object's text and its identifier is reset.
    LibraryString built(IDS_KXUI_VERSION);
    built.format(L"<%t>", IDS_KXUI_LANGUAGE);
    EXPECT_EQ(0u, built.getId());
    EXPECT_STREQ(L"<English>", built.loadString());
}

TEST(ResourceStrings, Equality)
{
    // Same identifier, same module: equal without loading either text.
    LibraryString a(IDS_KXUI_VERSION), b(IDS_KXUI_VERSION), c(IDS_KXUI_LANGUAGE);
    EXPECT_TRUE(a == b);
    EXPECT_TRUE(a.cached().IsEmpty());
    EXPECT_TRUE(b.cached().IsEmpty());
    EXPECT_FALSE(a == c);

    // Without an identifier the texts decide, exactly.
    LibraryString built;
    built.format(L"English");
    EXPECT_TRUE(built == c);
    EXPECT_TRUE(c == built);
    built.format(L"english");
    EXPECT_FALSE(built == c);

    // The same identifier in two modules: the texts decide.
    LoadedModule fr(L"KxTestU_fr_FR.kxx"), de(L"KxTestU_de_DE.kxx");
    ModuleString frGreeting(fr.get(), IDS_TEST_GREETING), deGreeting(de.get(), IDS_TEST_GREETING);
    ModuleString frAgain(fr.get(), IDS_TEST_GREETING);
    EXPECT_FALSE(frGreeting == deGreeting);
    EXPECT_TRUE(frGreeting == frAgain);
    ModuleString frLanguage(fr.get(), IDS_KXUI_LANGUAGE);  // not in that module: empty
    EXPECT_FALSE(frLanguage == c);
}

TEST(ResourceStrings, LanguageLibrariesFoundByName)
{
    EXPECT_EQ(nullptr, KxUi::getHInstanceModuleRc(L"KxTest", L".kxx", L"fr_FR"));  // not loaded, no fall-back
    LoadedModule fr(L"KxTestU_fr_FR.kxx"), de(L"KxTestU_de_DE.kxx");
    ASSERT_NE(nullptr, fr.get());
    ASSERT_NE(nullptr, de.get());

    EXPECT_EQ(fr.get(), KxUi::getHInstanceModuleRc(L"KxTest", L".kxx", L"fr_FR"));
    EXPECT_EQ(fr.get(), KxUi::getHInstanceModuleRc(L"KxTest", L".KXX", L"fr_FR"));
    EXPECT_EQ(de.get(), KxUi::getHInstanceModuleRc(L"KxTest", L".kxx", L"de_DE"));
    // Without the ".kxx" extension the language is not part of the name.
    EXPECT_EQ(library(), KxUi::getHInstanceModuleRc(L"KxUiDll", L".dll", L"fr_FR"));
    EXPECT_EQ(nullptr, KxUi::getHInstanceModuleRc(L"KxTest", L".kxx"));  // "KxTestU.kxx"
    EXPECT_EQ(nullptr, KxUi::getHInstanceModuleRc(nullptr, L".kxx", L"fr_FR"));

    ModuleString window(KxUi::getHInstanceModuleRc(L"KxTest", L".kxx", L"fr_FR"), IDS_TEST_WINDOW);
    EXPECT_STREQ(L"Fen\u00eatre", window.loadString());
    ModuleString fenster(KxUi::getHInstanceModuleRc(L"KxTest", L".kxx", L"de_DE"), IDS_TEST_WINDOW);
    EXPECT_STREQ(L"Fenster", fenster.loadString());
    ModuleString onlyFrench(de.get(), IDS_TEST_ONLY_FR);
    EXPECT_TRUE(onlyFrench.loadString().IsEmpty());

    // A module that cannot be found gives empty strings, not the program's own.
    ModuleString missing(KxUi::getHInstanceModuleRc(L"KxTest", L".kxx", L"it_IT"), IDS_TEST_GREETING);
    EXPECT_EQ(nullptr, missing.getHINSTANCE());
    EXPECT_TRUE(missing.loadString().IsEmpty());
}

TEST(ResourceStrings, FallBackModuleBesideTheLibrary)
{
    // No "KxUiDllU_it_IT.kxx" is loaded: the library's resource-only module is loaded instead.
    HINSTANCE fallback = KxUi::getHInstanceModuleRc(L"KxUiDll", L".kxx", L"it_IT");
    ASSERT_NE(nullptr, fallback);
    EXPECT_NE(library(), fallback);
    EXPECT_EQ(GetModuleHandleW(L"KxUiDllrcU.dll"), fallback);
    EXPECT_EQ(moduleDirectory(library()), moduleDirectory(fallback));

    ModuleString version(fallback, IDS_KXUI_VERSION);
    EXPECT_STREQ(L"KxUi 0.1", version.loadString());
    ModuleString language(fallback, IDS_KXUI_LANGUAGE);
    EXPECT_STREQ(L"English", language.loadString());
    FreeLibrary(fallback);
}

TEST(ResourceStrings, PlantedFallBackModuleOutsideTheLibraryDirectoryIsNotLoaded)
{
    wchar_t temp[MAX_PATH];
    GetTempPathW(MAX_PATH, temp);
    const std::wstring plantDir = std::wstring(temp) + L"KxUiPlant" + std::to_wstring(GetCurrentProcessId());
    ASSERT_TRUE(CreateDirectoryW(plantDir.c_str(), nullptr));
    const std::wstring source = moduleDirectory(GetModuleHandleW(nullptr)) + L"KxTestU_fr_FR.kxx";
    const std::wstring planted = plantDir + L"\\KxPlantrcU.dll";
    ASSERT_TRUE(CopyFileW(source.c_str(), planted.c_str(), FALSE));

    wchar_t previous[MAX_PATH];
    GetCurrentDirectoryW(MAX_PATH, previous);
    SetCurrentDirectoryW(plantDir.c_str());
    EXPECT_EQ(nullptr, KxUi::getHInstanceModuleRc(L"KxPlant", L".dll"));
    EXPECT_EQ(nullptr, GetModuleHandleW(L"KxPlantrcU.dll"));
    // Nor through a base name that leads out of the library's directory.
    const std::wstring relative = plantDir + L"\\KxPlant";
    EXPECT_EQ(nullptr, KxUi::getHInstanceModuleRc(relative.c_str(), L".dll"));
    SetCurrentDirectoryW(previous);

    // The same module beside the library is the fall-back.
    const std::wstring beside = moduleDirectory(library()) + L"KxPlantrcU.dll";
    ASSERT_TRUE(CopyFileW(source.c_str(), beside.c_str(), FALSE));
    HINSTANCE found = KxUi::getHInstanceModuleRc(L"KxPlant", L".dll");
    EXPECT_NE(nullptr, found);
    ModuleString greeting(found, IDS_TEST_GREETING);
    EXPECT_STREQ(L"Bonjour", greeting.loadString());
    if (found)
        FreeLibrary(found);

    DeleteFileW(beside.c_str());
    DeleteFileW(planted.c_str());
    RemoveDirectoryW(plantDir.c_str());
}
