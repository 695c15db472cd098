// The thread's language: the table of languages, switching with its fall-back and the
// message box of each failed switch.
#include "KxUiThreadLocale.h"
#include "KxTestApp.h"
#include <set>
#include <string>
#include <vector>

namespace {

typedef KxUiThreadLocale TL;

// Texts of the message boxes shown since the test began (recorded by the test application).
std::vector<std::wstring> boxes()
{
    std::vector<std::wstring> texts;
    for (const KxTestApp::Box& box : KxTestApp::Get().Boxes())
        texts.emplace_back(box.text.GetString());
    return texts;
}

// Languages the platform is made to refuse (it accepts every language by itself).
std::set<LANGID> g_refused;

LANGID WINAPI refusingSetThreadUILanguage(LANGID language)
{
    if (g_refused.count(language))
        return 0;
    return SetThreadUILanguage(language);
}

class ThreadLocale : public testing::Test {
protected:
    void SetUp() override
    {
        m_saved = TL::GetThreadLocale();
        g_refused.clear();
        TL::setUILanguageProc(&refusingSetThreadUILanguage);
    }
    void TearDown() override
    {
        TL::setUILanguageProc(nullptr);
        TL::SetThreadLocale(m_saved);
    }

    unsigned long m_saved = 0;
};

} // namespace

TEST(ThreadLocaleTable, SixteenLanguages)
{
    struct Row {
        TL::LanguageType type;
        unsigned long lcid;
        const wchar_t* name;
    };
    const Row rows[] = {
        {TL::langFrench, 1036, L"fr_FR"}, {TL::langEnglish, 2057, L"en_EN"},
        {TL::langChineseSimplified, 2052, L"zh_CN"}, {TL::langChineseTraditional, 1028, L"zh_TW"},
        {TL::langSpanish, 1034, L"es_ES"}, {TL::langGerman, 1031, L"de_DE"},
        {TL::langPortuguese, 2070, L"pt_PT"}, {TL::langKorean, 1042, L"ko_KR"},
        {TL::langJapanese, 1041, L"ja_JP"}, {TL::langRussian, 1049, L"ru_RU"},
        {TL::langDutch, 1043, L"nl_NL"}, {TL::langItalian, 1040, L"it_IT"},
        {TL::langEnglishCanada, 4105, L"en_CA"}, {TL::langCzech, 1029, L"cs_CZ"},
        {TL::langPolish, 1045, L"pl_PL"}, {TL::langTurkish, 1055, L"tr_TR"},
    };
    int value = 1;
    for (const Row& row : rows) {
        EXPECT_EQ(value++, int(row.type));
        EXPECT_EQ(row.lcid, TL::getLCID(row.type));
        EXPECT_EQ(row.type, TL::getLanguageType(row.lcid));
        EXPECT_STREQ(row.name, TL::getLocalNameFromLCID(row.lcid));
    }
    EXPECT_EQ(0u, TL::getLCID(TL::langNone));
    EXPECT_EQ(0u, TL::getLCID(static_cast<TL::LanguageType>(17)));
    EXPECT_EQ(0u, TL::getLCID(static_cast<TL::LanguageType>(-1)));
    EXPECT_EQ(TL::langNone, TL::getLanguageType(0x0409));  // US English is not supported
    EXPECT_STREQ(L"undefined", TL::getLocalNameFromLCID(0x0409));
    EXPECT_STREQ(L"undefined", TL::getLocalNameFromLCID(0));
}

TEST_F(ThreadLocale, SwitchesAmongLanguagesOnThePlatform)
{
    for (TL::LanguageType language : {TL::langGerman, TL::langJapanese, TL::langEnglish, TL::langFrench}) {
        EXPECT_TRUE(TL::setAppLangage(language, TL::langFrench)) << language;
        EXPECT_EQ(TL::getLCID(language), TL::GetThreadLocale());
    }
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ThreadLocale, FallBackWhenTheWantedLanguageFails)
{
    ASSERT_TRUE(TL::setAppLangage(TL::langGerman, TL::langGerman));
    g_refused = {0x0804};
    EXPECT_FALSE(TL::setAppLangage(TL::langChineseSimplified, TL::langFrench));
    EXPECT_EQ(0x040Cu, TL::GetThreadLocale());
    EXPECT_EQ(std::vector<std::wstring>{L"$$Cant change language"}, boxes());
    EXPECT_EQ(UINT(MB_OK), KxTestApp::Get().Boxes().at(0).type);
}

TEST_F(ThreadLocale, BothFailingShowsTwoBoxesAndLeavesTheLanguage)
{
    ASSERT_TRUE(TL::setAppLangage(TL::langGerman, TL::langGerman));
    g_refused = {0x0804, 0x040C};
    EXPECT_FALSE(TL::setAppLangage(TL::langChineseSimplified, TL::langFrench));
    EXPECT_EQ(0x0407u, TL::GetThreadLocale());
    EXPECT_EQ(2u, boxes().size());

    // Asked for one language as its own fall-back: one attempt, one box.
    EXPECT_FALSE(TL::setAppLangage(TL::langFrench, TL::langFrench));
    EXPECT_EQ(3u, boxes().size());
    EXPECT_EQ(0, TL::SetThreadLocale(0x040C));
    EXPECT_EQ(4u, boxes().size());
}

TEST_F(ThreadLocale, UnknownWantedLanguageGoesStraightToTheFallBackWithoutABox)
{
    EXPECT_FALSE(TL::setAppLangage(TL::langNone, TL::langGerman));
    EXPECT_EQ(0x0407u, TL::GetThreadLocale());
    EXPECT_FALSE(TL::setAppLangage(static_cast<TL::LanguageType>(40), TL::langItalian));
    EXPECT_EQ(0x0410u, TL::GetThreadLocale());
    EXPECT_FALSE(TL::setAppLangage(TL::langNone, TL::langNone));
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ThreadLocale, SwitchAppLanguageIsAScopeGuard)
{
    ASSERT_TRUE(TL::setAppLangage(TL::langSpanish, TL::langSpanish));
    {
        TL guard;
        EXPECT_TRUE(guard.switchAppLanguage(TL::langItalian, TL::langFrench));
        EXPECT_EQ(0x0410u, TL::GetThreadLocale());
    }
    EXPECT_EQ(0x040Au, TL::GetThreadLocale());
    {
        TL guard;
        g_refused = {0x0412};
        EXPECT_FALSE(guard.switchAppLanguage(TL::langKorean, TL::langCzech));  // falls back, still restores
        EXPECT_EQ(0x0405u, TL::GetThreadLocale());
        g_refused.clear();
    }
    EXPECT_EQ(0x040Au, TL::GetThreadLocale());
    {
        TL noGuard;  // a plain switch is not undone
        EXPECT_TRUE(TL::setAppLangage(TL::langPolish, TL::langPolish));
    }
    EXPECT_EQ(0x0415u, TL::GetThreadLocale());
}

TEST_F(ThreadLocale, ASwitchActsOnTheCallingThreadOnly)
{
    ASSERT_TRUE(TL::setAppLangage(TL::langDutch, TL::langDutch));
    struct Result {
        bool switched;
        unsigned long language;
    } result = {};
    HANDLE thread = CreateThread(nullptr, 0, [](void* p) -> DWORD {
        Result* r = static_cast<Result*>(p);
        r->switched = TL::setAppLangage(TL::langRussian, TL::langRussian);
        r->language = TL::GetThreadLocale();
        return 0;
    }, &result, 0, nullptr);
    ASSERT_NE(nullptr, thread);
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
    EXPECT_TRUE(result.switched);
    EXPECT_EQ(0x0419u, result.language);
    EXPECT_EQ(0x0413u, TL::GetThreadLocale());
}
