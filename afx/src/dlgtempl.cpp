// CDialogTemplateBuilder: DLGTEMPLATE and DLGITEMTEMPLATE records built in memory.
#include "afximpl.h"
#include "afxpriv.h"
#include <vector>

struct CDialogTemplateBuilder::Impl {
    std::vector<WORD> words;

    void Dword(DWORD v)
    {
        words.push_back(LOWORD(v));
        words.push_back(HIWORD(v));
    }
    void Text(LPCTSTR s)
    {
        for (; s != nullptr && *s; ++s)
            words.push_back(static_cast<WORD>(*s));
        words.push_back(0);
    }
    void AlignDword()
    {
        if (words.size() % 2 != 0)
            words.push_back(0);
    }
};

CDialogTemplateBuilder::CDialogTemplateBuilder(LPCTSTR lpszCaption, DWORD dwStyle, const RECT& rect, LPCTSTR lpszFont,
                                               WORD wPointSize, DWORD dwExStyle)
    : m_pImpl(new Impl)
{
    if (lpszFont != nullptr)
        dwStyle |= DS_SETFONT;
    else
        dwStyle &= ~static_cast<DWORD>(DS_SETFONT);
    Impl& t = *m_pImpl;
    t.Dword(dwStyle);
    t.Dword(dwExStyle);
    t.words.push_back(0);  // number of items, counted by AddItem
    t.words.push_back(static_cast<WORD>(rect.left));
    t.words.push_back(static_cast<WORD>(rect.top));
    t.words.push_back(static_cast<WORD>(rect.right - rect.left));
    t.words.push_back(static_cast<WORD>(rect.bottom - rect.top));
    t.words.push_back(0);  // no menu
    t.words.push_back(0);  // the dialog class
    t.Text(lpszCaption);
    if (lpszFont != nullptr) {
        t.words.push_back(wPointSize);
        t.Text(lpszFont);
    }
}

CDialogTemplateBuilder::~CDialogTemplateBuilder()
{
    delete m_pImpl;
}

void CDialogTemplateBuilder::AddItem(LPCTSTR lpszClass, LPCTSTR lpszText, DWORD dwStyle, const RECT& rect, WORD nID,
                                     DWORD dwExStyle)
{
    Impl& t = *m_pImpl;
    t.AlignDword();
    t.Dword(dwStyle | WS_CHILD | WS_VISIBLE);
    t.Dword(dwExStyle);
    t.words.push_back(static_cast<WORD>(rect.left));
    t.words.push_back(static_cast<WORD>(rect.top));
    t.words.push_back(static_cast<WORD>(rect.right - rect.left));
    t.words.push_back(static_cast<WORD>(rect.bottom - rect.top));
    t.words.push_back(nID);
    t.Text(lpszClass);
    t.Text(lpszText);
    t.words.push_back(0);  // no creation data
    ++t.words[4];
}

int CDialogTemplateBuilder::GetItemCount() const
{
    return m_pImpl->words[4];
}

LPCDLGTEMPLATE CDialogTemplateBuilder::GetTemplate()
{
    return reinterpret_cast<LPCDLGTEMPLATE>(m_pImpl->words.data());
}

size_t CDialogTemplateBuilder::GetSize() const
{
    return m_pImpl->words.size() * sizeof(WORD);
}
