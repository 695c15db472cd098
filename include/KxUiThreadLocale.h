// KxUiThreadLocale: the thread's user-interface language among the supported languages.
#pragma once
#include "KxUiDef.h"

class KXUI_API KxUiThreadLocale {
public:
    // The supported languages; 0 is none.
    enum LanguageType {
        langNone = 0,
        langFrench = 1,              // "fr_FR" 0x040C
        langEnglish = 2,             // "en_EN" 0x0809 (United Kingdom)
        langChineseSimplified = 3,   // "zh_CN" 0x0804
        langChineseTraditional = 4,  // "zh_TW" 0x0404
        langSpanish = 5,             // "es_ES" 0x040A
        langGerman = 6,              // "de_DE" 0x0407
        langPortuguese = 7,          // "pt_PT" 0x0816
        langKorean = 8,              // "ko_KR" 0x0412
        langJapanese = 9,            // "ja_JP" 0x0411
        langRussian = 10,            // "ru_RU" 0x0419
        langDutch = 11,              // "nl_NL" 0x0413
        langItalian = 12,            // "it_IT" 0x0410
        langEnglishCanada = 13,      // "en_CA" 0x1009
        langCzech = 14,              // "cs_CZ" 0x0405
        langPolish = 15,             // "pl_PL" 0x0415
        langTurkish = 16,            // "tr_TR" 0x041F
    };

    // Saves the thread's current language.
    KxUiThreadLocale();
    KxUiThreadLocale(const KxUiThreadLocale& other) = default;
    KxUiThreadLocale& operator=(const KxUiThreadLocale& other) = default;
    // Puts the saved language back if switchAppLanguage was called.
    virtual ~KxUiThreadLocale();

    // The thread's user-interface language (thread locale before Windows Vista).
    static unsigned long GetThreadLocale();
    // 1 on success; on failure shows "$$Cant change language" and returns 0.
    static int SetThreadLocale(unsigned long lcid);

    // LCID of a language; 0 outside 1..16.
    static unsigned long getLCID(LanguageType language);
    // The first language with this LCID, or langNone.
    static LanguageType getLanguageType(unsigned long lcid);
    // Locale name such as "fr_FR", or "undefined".
    static CString getLocalNameFromLCID(unsigned long lcid);

    // Switches to `wanted`; when that fails, switches to `fallback` and still returns false:
    // true means exactly that `wanted` is in force.
    static bool setAppLangage(LanguageType wanted, LanguageType fallback);

    // setAppLangage, and the saved language comes back when this object is destroyed.
    bool switchAppLanguage(LanguageType wanted, LanguageType fallback);

    // The function that puts a language in force on Windows Vista and later: the platform's
    // SetThreadUILanguage unless replaced (null puts the platform's back). Returns the
    // replacement in force before. Lets a program see a failing switch where the platform
    // accepts every language.
    typedef LANGID(WINAPI* SetUILanguageProc)(LANGID);
    static SetUILanguageProc setUILanguageProc(SetUILanguageProc proc);

protected:
    unsigned long m_nSavedLCID;   // language when the object was made
    bool m_bRestore;              // put it back on destruction
};
