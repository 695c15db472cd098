#include "KxUiShellFileOp.h"

KxUiShellFileOp::KxUiShellFileOp()
    : m_nMax{0, 0}, m_nLen{0, 0}, m_fos{}, m_pBuffer{nullptr, nullptr},
      m_pPos{nullptr, nullptr}, m_pTitle(nullptr)
{
}

KxUiShellFileOp::KxUiShellFileOp(HWND owner, UINT operation, CString from, CString to,
                                 WORD flags, CString title)
    : KxUiShellFileOp()
{
    SetOwner(owner);
    AddFile(0, from);
    AddFile(1, to);
    SetFlags(flags);
    SetTitle(title);
    switch (operation) {
    case FO_MOVE:
        MoveFiles();
        break;
    case FO_COPY:
        CopyFiles();
        break;
    case FO_DELETE:
        DeleteFiles();
        break;
    case FO_RENAME:
        RenameFiles();
        break;
    default:
        break;
    }
}

KxUiShellFileOp::KxUiShellFileOp(const KxUiShellFileOp& other) : KxUiShellFileOp()
{
    copyFrom(other);
}

KxUiShellFileOp& KxUiShellFileOp::operator=(const KxUiShellFileOp& other)
{
    if (this != &other) {
        ClearFiles(0);
        ClearFiles(1);
        SetTitle(CString());
        copyFrom(other);
    }
    return *this;
}

KxUiShellFileOp::~KxUiShellFileOp()
{
    ClearFiles(0);
    ClearFiles(1);
    free(m_pTitle);
}

void KxUiShellFileOp::copyFrom(const KxUiShellFileOp& other)
{
    m_fos = other.m_fos;
    m_fos.pFrom = m_fos.pTo = nullptr;
    m_fos.lpszProgressTitle = nullptr;
    for (int list = 0; list < 2; ++list) {
        if (other.m_pBuffer[list] && GrabMem(list, other.m_nMax[list])) {
            wmemcpy(m_pBuffer[list], other.m_pBuffer[list], other.m_nLen[list] + 1);
            m_nLen[list] = other.m_nLen[list];
            m_pPos[list] = m_pBuffer[list] + m_nLen[list];
        }
    }
    SetTitle(CString(other.m_pTitle));
}

void KxUiShellFileOp::setListPointer(int list)
{
    (list == 0 ? m_fos.pFrom : m_fos.pTo) = m_pBuffer[list];
}

bool KxUiShellFileOp::GrabMem(int list, int characters)
{
    if (list < 0 || list > 1 || characters <= 0)
        return false;
    // A failed allocation raises the framework's memory exception, as its strings and
    // arrays do; the list keeps its old buffer.
    if (m_pBuffer[list]) {
        const ptrdiff_t position = m_pPos[list] - m_pBuffer[list];
        LPWSTR grown = static_cast<LPWSTR>(realloc(m_pBuffer[list], characters * sizeof(WCHAR)));
        if (!grown)
            AfxThrowMemoryException();
        m_pBuffer[list] = grown;
        m_pPos[list] = grown + position;
    } else {
        LPWSTR buffer = static_cast<LPWSTR>(malloc(characters * sizeof(WCHAR)));
        if (!buffer)
            AfxThrowMemoryException();
        m_pBuffer[list] = m_pPos[list] = buffer;
        buffer[0] = 0;
    }
    m_nMax[list] = characters;
    setListPointer(list);
    return true;
}

bool KxUiShellFileOp::AddFile(int list, CString name)
{
    if (list < 0 || list > 1)
        return false;
    const int n = name.GetLength() + 1;
    if (m_nLen[list] + n + 1 > m_nMax[list])
        GrabMem(list, m_nLen[list] + n + 1);
    wmemcpy(m_pPos[list], static_cast<LPCWSTR>(name), n);
    m_pPos[list] += n;
    m_nLen[list] += n;
    *m_pPos[list] = 0;
    setListPointer(list);
    return true;
}

void KxUiShellFileOp::ClearFiles(int list)
{
    if (list < 0 || list > 1)
        return;
    free(m_pBuffer[list]);
    m_pBuffer[list] = m_pPos[list] = nullptr;
    m_nMax[list] = m_nLen[list] = 0;
    setListPointer(list);
}

void KxUiShellFileOp::SetMaxCount(int list, LONG count)
{
    // Never shrinks below the names already in the list.
    if (list < 0 || list > 1 || count < m_nLen[list] || count >= INT_MAX)
        return;
    GrabMem(list, int(count) + 1);
}

void KxUiShellFileOp::SetTitle(CString title)
{
    LPWSTR copy = nullptr;
    if (!title.IsEmpty()) {
        const size_t n = size_t(title.GetLength()) + 1;
        copy = static_cast<LPWSTR>(malloc(n * sizeof(WCHAR)));
        if (!copy)
            AfxThrowMemoryException();  // the old title stays
        wmemcpy(copy, static_cast<LPCWSTR>(title), n);
    }
    free(m_pTitle);
    m_pTitle = copy;
    m_fos.lpszProgressTitle = m_pTitle;
}

void KxUiShellFileOp::SetTitle(int resourceId)
{
    CString title;
    title.LoadString(UINT(resourceId));
    SetTitle(title);
}

LONG KxUiShellFileOp::run(UINT operation)
{
    m_fos.fAnyOperationsAborted = FALSE;
    m_fos.wFunc = operation;
    return SHFileOperationW(&m_fos);
}

LONG KxUiShellFileOp::CopyFiles()
{
    return run(FO_COPY);
}

LONG KxUiShellFileOp::MoveFiles()
{
    return run(FO_MOVE);
}

LONG KxUiShellFileOp::DeleteFiles()
{
    return run(FO_DELETE);
}

LONG KxUiShellFileOp::RenameFiles()
{
    return run(FO_RENAME);
}
