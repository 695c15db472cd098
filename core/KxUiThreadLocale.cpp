#include "KxUiThreadLocale.h"
#include "KxUiSystemInfo.h"
#include <afxwin.h>

namespace {

struct LanguageEntry {
    unsigned long lcid;
    const wchar_t* name;
};

// Indexed by LanguageType - 1. English carries the United Kingdom's identifier.
const LanguageEntry kLanguages[] = {
    {0x040C, L"fr_FR"}, {0x0809, L"en_EN"}, {0x0804, L"zh_CN"}, {0x0404, L"zh_TW"},
    {0x040A, L"es_ES"}, {0x0407, L"de_DE"}, {0x0816, L"pt_PT"}, {0x0412, L"ko_KR"},
    {0x0411, L"ja_JP"}, {0x0419, L"ru_RU"}, {0x0413, L"nl_NL"}, {0x0410, L"it_IT"},
    {0x1009, L"en_CA"}, {0x0405, L"cs_CZ"}, {0x0415, L"pl_PL"}, {0x041F, L"tr_TR"},
};
const int kLanguageCount = sizeof(kLanguages) / sizeof(kLanguages[0]);

KxUiThreadLocale::SetUILanguageProc s_setUILanguage = nullptr;

// Some platforms (Wine among them) accept SetThreadUILanguage but keep answering the old
// language from GetThreadUILanguage. So that the language put in force can be read back,
// the thread remembers what it set and what the platform answered right after: as long as
// the platform still gives that same answer, nobody has changed the language since and the
// language set is the one reported; once the platform's answer moves, the platform's wins.
// Where the platform reports the language set, both are the same and nothing changes.
thread_local unsigned long t_languageSet = 0;
thread_local unsigned long t_platformAnswerAfterSet = 0;

// Calls a kernel32 function of Windows Vista and later, found at run time.
template <class Result, class... Args>
bool callKernel32(const char* function, Result& result, Args... args)
{
    HMODULE kernel = ::LoadLibraryW(L"Kernel32.dll");
    if (!kernel)
        return false;
    auto proc = reinterpret_cast<Result(WINAPI*)(Args...)>(::GetProcAddress(kernel, function));
    if (proc)
        result = proc(args...);
    ::FreeLibrary(kernel);
    return proc != nullptr;
}

unsigned long platformUILanguage()
{
    LANGID language = 0;
    callKernel32("GetThreadUILanguage", language);
    return language;
}

} // namespace

KxUiThreadLocale::KxUiThreadLocale() : m_nSavedLCID(GetThreadLocale()), m_bRestore(false)
{
}

KxUiThreadLocale::~KxUiThreadLocale()
{
    if (m_bRestore)
        SetThreadLocale(m_nSavedLCID);
}

unsigned long KxUiThreadLocale::GetThreadLocale()
{
    if (!KxUiSystemInfo().IsWinVistaOrGreater())
        return ::GetThreadLocale();
    const unsigned long platform = platformUILanguage();
    if (t_languageSet != 0 && platform == t_platformAnswerAfterSet)
        return t_languageSet;
    return platform;
}

int KxUiThreadLocale::SetThreadLocale(unsigned long lcid)
{
    bool done = false;
    if (KxUiSystemInfo().IsWinVistaOrGreater()) {
        LANGID answer = 0;
        if (s_setUILanguage) {
            answer = s_setUILanguage(static_cast<LANGID>(lcid));
            done = true;
        } else {
            done = callKernel32("SetThreadUILanguage", answer, static_cast<LANGID>(lcid));
        }
        done = done && answer == lcid;
        if (done) {
            t_languageSet = lcid;
            t_platformAnswerAfterSet = platformUILanguage();
        }
    } else {
        done = ::SetThreadLocale(lcid) != FALSE;
    }
    if (!done) {
        AfxMessageBox(L"$$Cant change language", MB_OK);
        return 0;
    }
    return 1;
}

unsigned long KxUiThreadLocale::getLCID(LanguageType language)
{
    const int index = static_cast<int>(language) - 1;
    return index >= 0 && index < kLanguageCount ? kLanguages[index].lcid : 0;
}

KxUiThreadLocale::LanguageType KxUiThreadLocale::getLanguageType(unsigned long lcid)
{
    for (int i = 0; i < kLanguageCount; ++i) {
        if (kLanguages[i].lcid == lcid)
            return static_cast<LanguageType>(i + 1);
    }
    return langNone;
}

CString KxUiThreadLocale::getLocalNameFromLCID(unsigned long lcid)
{
    const LanguageType language = getLanguageType(lcid);
    return CString(language == langNone ? L"undefined" : kLanguages[language - 1].name);
}

bool KxUiThreadLocale::setAppLangage(LanguageType wanted, LanguageType fallback)
{
    const unsigned long lcid = getLCID(wanted);
    if (lcid != 0 && SetThreadLocale(lcid))
        return true;
    if (wanted == fallback)
        return false;
    // The fall-back is put in force when it can be, but the caller still learns that the
    // language it asked for is not.
    setAppLangage(fallback, fallback);
    return false;
}

bool KxUiThreadLocale::switchAppLanguage(LanguageType wanted, LanguageType fallback)
{
    m_bRestore = true;
    return setAppLangage(wanted, fallback);
}

KxUiThreadLocale::SetUILanguageProc KxUiThreadLocale::setUILanguageProc(SetUILanguageProc proc)
{
    SetUILanguageProc previous = s_setUILanguage;
    s_setUILanguage = proc;
    return previous;
}
