// CWinApp profile: the registry under HKCU\Software\<key>\<application>, or an .ini file.
#include "afximpl.h"
#include <cstdlib>
#include <cwchar>

namespace {

// Text of an .ini value, however long.
CString IniString(LPCTSTR section, LPCTSTR entry, LPCTSTR def, LPCTSTR file)
{
    CString s;
    for (DWORD size = 256;; size *= 4) {
        const DWORD n = ::GetPrivateProfileStringW(section, entry, def, s.GetBuffer(static_cast<int>(size)), size, file);
        if (n < size - 1 || size >= (1u << 24)) {
            s.ReleaseBuffer(static_cast<int>(n));
            return s;
        }
        s.ReleaseBuffer(0);
    }
}

}  // namespace

void CWinApp::SetRegistryKey(LPCTSTR lpszRegistryKey)
{
    if (lpszRegistryKey == nullptr)
        return;
    free(const_cast<LPTSTR>(m_pszRegistryKey));
    m_pszRegistryKey = _wcsdup(lpszRegistryKey);
    // Under the key, the application's values live under its name.
    free(const_cast<LPTSTR>(m_pszProfileName));
    m_pszProfileName = _wcsdup(m_pszAppName != nullptr ? m_pszAppName : L"");
}

void CWinApp::SetRegistryKey(UINT nIDRegistryKey)
{
    CString key;
    if (key.LoadString(nIDRegistryKey))
        SetRegistryKey(key);
}

HKEY CWinApp::GetAppRegistryKey()
{
    if (m_pszRegistryKey == nullptr || m_pszProfileName == nullptr)
        return nullptr;
    HKEY soft = nullptr, company = nullptr, app = nullptr;
    if (::RegOpenKeyExW(HKEY_CURRENT_USER, L"Software", 0, KEY_READ | KEY_WRITE, &soft) == ERROR_SUCCESS) {
        if (::RegCreateKeyExW(soft, m_pszRegistryKey, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_READ | KEY_WRITE,
                              nullptr, &company, nullptr) == ERROR_SUCCESS) {
            ::RegCreateKeyExW(company, m_pszProfileName, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_READ | KEY_WRITE,
                              nullptr, &app, nullptr);
            ::RegCloseKey(company);
        }
        ::RegCloseKey(soft);
    }
    return app;
}

HKEY CWinApp::GetSectionKey(LPCTSTR lpszSection)
{
    if (lpszSection == nullptr)
        return nullptr;
    HKEY app = GetAppRegistryKey();
    if (app == nullptr)
        return nullptr;
    HKEY section = nullptr;
    // A section with backslashes is a path of nested keys.
    ::RegCreateKeyExW(app, lpszSection, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_READ | KEY_WRITE, nullptr, &section,
                      nullptr);
    ::RegCloseKey(app);
    return section;
}

UINT CWinApp::GetProfileInt(LPCTSTR lpszSection, LPCTSTR lpszEntry, int nDefault)
{
    if (lpszSection == nullptr || lpszEntry == nullptr)
        return static_cast<UINT>(nDefault);
    if (m_pszRegistryKey == nullptr)
        return ::GetPrivateProfileIntW(lpszSection, lpszEntry, nDefault, m_pszProfileName);
    HKEY key = GetSectionKey(lpszSection);
    if (key == nullptr)
        return static_cast<UINT>(nDefault);
    DWORD value = 0, type = REG_NONE, size = sizeof value;
    const LONG r = ::RegQueryValueExW(key, lpszEntry, nullptr, &type, reinterpret_cast<BYTE*>(&value), &size);
    ::RegCloseKey(key);
    if (r == ERROR_SUCCESS && type == REG_DWORD && size == sizeof value)
        return value;
    return static_cast<UINT>(nDefault);
}

BOOL CWinApp::WriteProfileInt(LPCTSTR lpszSection, LPCTSTR lpszEntry, int nValue)
{
    if (lpszSection == nullptr || lpszEntry == nullptr)
        return FALSE;
    if (m_pszRegistryKey == nullptr) {
        wchar_t text[16];
        ::wsprintfW(text, L"%d", nValue);
        return ::WritePrivateProfileStringW(lpszSection, lpszEntry, text, m_pszProfileName);
    }
    HKEY key = GetSectionKey(lpszSection);
    if (key == nullptr)
        return FALSE;
    const DWORD value = static_cast<DWORD>(nValue);
    const LONG r =
        ::RegSetValueExW(key, lpszEntry, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value), sizeof value);
    ::RegCloseKey(key);
    return r == ERROR_SUCCESS;
}

CString CWinApp::GetProfileString(LPCTSTR lpszSection, LPCTSTR lpszEntry, LPCTSTR lpszDefault)
{
    const CString def(lpszDefault != nullptr ? lpszDefault : L"");
    if (lpszSection == nullptr || lpszEntry == nullptr)
        return def;
    if (m_pszRegistryKey == nullptr)
        return IniString(lpszSection, lpszEntry, def, m_pszProfileName);
    HKEY key = GetSectionKey(lpszSection);
    if (key == nullptr)
        return def;
    DWORD type = REG_NONE, size = 0;
    LONG r = ::RegQueryValueExW(key, lpszEntry, nullptr, &type, nullptr, &size);
    CString value;
    if (r == ERROR_SUCCESS && (type == REG_SZ || type == REG_EXPAND_SZ)) {
        const int chars = static_cast<int>(size / sizeof(wchar_t));
        wchar_t* buf = value.GetBuffer(chars + 1);
        r = ::RegQueryValueExW(key, lpszEntry, nullptr, &type, reinterpret_cast<BYTE*>(buf), &size);
        int len = r == ERROR_SUCCESS ? static_cast<int>(size / sizeof(wchar_t)) : 0;
        buf[len] = 0;
        value.ReleaseBuffer();  // up to the terminator the data may carry
    } else if (r == ERROR_SUCCESS) {
        r = ERROR_INVALID_DATA;  // another type is not a string
    }
    ::RegCloseKey(key);
    return r == ERROR_SUCCESS ? value : def;
}

BOOL CWinApp::WriteProfileString(LPCTSTR lpszSection, LPCTSTR lpszEntry, LPCTSTR lpszValue)
{
    if (lpszSection == nullptr)
        return FALSE;
    if (m_pszRegistryKey == nullptr)
        return ::WritePrivateProfileStringW(lpszSection, lpszEntry, lpszValue, m_pszProfileName);
    LONG r;
    if (lpszEntry == nullptr) {
        HKEY app = GetAppRegistryKey();
        if (app == nullptr)
            return FALSE;
        // The section's values and nested keys, then the key if it is still there.
        r = ::RegDeleteTreeW(app, lpszSection);
        if (r == ERROR_SUCCESS) {
            const LONG r2 = ::RegDeleteKeyW(app, lpszSection);
            if (r2 != ERROR_FILE_NOT_FOUND)
                r = r2;
        }
        ::RegCloseKey(app);
        return r == ERROR_SUCCESS;
    }
    HKEY key = GetSectionKey(lpszSection);
    if (key == nullptr)
        return FALSE;
    if (lpszValue == nullptr) {
        r = ::RegDeleteValueW(key, lpszEntry);
    } else {
        const DWORD bytes = static_cast<DWORD>((wcslen(lpszValue) + 1) * sizeof(wchar_t));
        r = ::RegSetValueExW(key, lpszEntry, 0, REG_SZ, reinterpret_cast<const BYTE*>(lpszValue), bytes);
    }
    ::RegCloseKey(key);
    return r == ERROR_SUCCESS;
}

BOOL CWinApp::GetProfileBinary(LPCTSTR lpszSection, LPCTSTR lpszEntry, LPBYTE* ppData, UINT* pBytes)
{
    if (ppData == nullptr || pBytes == nullptr)
        return FALSE;
    *ppData = nullptr;
    *pBytes = 0;
    if (lpszSection == nullptr || lpszEntry == nullptr)
        return FALSE;
    if (m_pszRegistryKey == nullptr) {
        // Two letters per byte, 'A' plus the low nibble then 'A' plus the high nibble.
        const CString text = IniString(lpszSection, lpszEntry, L"", m_pszProfileName);
        const int len = text.GetLength();
        if (len == 0 || len % 2 != 0)
            return FALSE;
        BYTE* data = new BYTE[len / 2];
        for (int i = 0; i < len / 2; ++i) {
            const int lo = text[2 * i] - L'A';
            const int hi = text[2 * i + 1] - L'A';
            if (lo < 0 || lo > 15 || hi < 0 || hi > 15) {
                delete[] data;
                return FALSE;  // not written by WriteProfileBinary
            }
            data[i] = static_cast<BYTE>((hi << 4) | lo);
        }
        *ppData = data;
        *pBytes = static_cast<UINT>(len / 2);
        return TRUE;
    }
    HKEY key = GetSectionKey(lpszSection);
    if (key == nullptr)
        return FALSE;
    DWORD type = REG_NONE, size = 0;
    LONG r = ::RegQueryValueExW(key, lpszEntry, nullptr, &type, nullptr, &size);
    if (r == ERROR_SUCCESS && type == REG_BINARY) {
        BYTE* data = new BYTE[size > 0 ? size : 1];
        r = ::RegQueryValueExW(key, lpszEntry, nullptr, &type, data, &size);
        if (r == ERROR_SUCCESS) {
            *ppData = data;
            *pBytes = size;
        } else {
            delete[] data;
        }
    } else if (r == ERROR_SUCCESS) {
        r = ERROR_INVALID_DATA;
    }
    ::RegCloseKey(key);
    return r == ERROR_SUCCESS;
}

BOOL CWinApp::WriteProfileBinary(LPCTSTR lpszSection, LPCTSTR lpszEntry, LPBYTE pData, UINT nBytes)
{
    if (lpszSection == nullptr || lpszEntry == nullptr || (pData == nullptr && nBytes != 0))
        return FALSE;
    if (m_pszRegistryKey == nullptr) {
        CString text;
        wchar_t* p = text.GetBuffer(static_cast<int>(nBytes * 2 + 1));
        for (UINT i = 0; i < nBytes; ++i) {
            p[2 * i] = static_cast<wchar_t>(L'A' + (pData[i] & 0x0F));
            p[2 * i + 1] = static_cast<wchar_t>(L'A' + ((pData[i] >> 4) & 0x0F));
        }
        text.ReleaseBuffer(static_cast<int>(nBytes * 2));
        return ::WritePrivateProfileStringW(lpszSection, lpszEntry, text, m_pszProfileName);
    }
    HKEY key = GetSectionKey(lpszSection);
    if (key == nullptr)
        return FALSE;
    const LONG r = ::RegSetValueExW(key, lpszEntry, 0, REG_BINARY, pData, nBytes);
    ::RegCloseKey(key);
    return r == ERROR_SUCCESS;
}
