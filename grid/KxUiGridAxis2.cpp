#include "KxUiGridAxis2.h"
#include <algorithm>

KxUiGridAxis2::KxUiGridAxis2() : m_nCount(0), m_nFixed(0), m_nDefault(0), m_nUniform(0), m_bDirty(true) {}

void KxUiGridAxis2::MakeExplicit()
{
    if (IsUniform())
        m_sizes.assign(static_cast<size_t>(m_nCount), m_nUniform);
    Invalidate();
}

BOOL KxUiGridAxis2::SetCount(int nCount)
{
    if (nCount < 0)
        return FALSE;
    if (nCount == m_nCount)
        return TRUE;
    if (IsUniform()) {
        // Still uniform when the new entries have the same size as the old ones, or when the
        // old ones all go.
        if (m_nCount == 0 || nCount < m_nCount || m_nDefault == m_nUniform) {
            if (m_nCount == 0 || nCount == 0)
                m_nUniform = m_nDefault;
            m_nCount = nCount;
            Invalidate();
            return TRUE;
        }
        MakeExplicit();
    }
    m_sizes.resize(static_cast<size_t>(nCount), m_nDefault);
    m_nCount = nCount;
    Invalidate();
    return TRUE;
}

BOOL KxUiGridAxis2::SetFixedCount(int nFixed)
{
    if (nFixed < 0)
        return FALSE;
    m_nFixed = nFixed;
    return TRUE;
}

void KxUiGridAxis2::SetDefaultSize(int nSize)
{
    m_nDefault = nSize < 0 ? 0 : nSize;
    if (m_nCount == 0 && IsUniform())
        m_nUniform = m_nDefault;
}

int KxUiGridAxis2::GetSize(int i) const
{
    if (i < 0 || i >= m_nCount)
        return 0;
    return IsUniform() ? m_nUniform : m_sizes[static_cast<size_t>(i)];
}

BOOL KxUiGridAxis2::SetSize(int i, int nSize)
{
    if (i < 0 || i >= m_nCount || nSize < 0)
        return FALSE;
    if (IsUniform()) {
        if (nSize == m_nUniform)
            return TRUE;
        MakeExplicit();
    }
    m_sizes[static_cast<size_t>(i)] = nSize;
    Invalidate();
    return TRUE;
}

BOOL KxUiGridAxis2::Insert(int i, int nSize)
{
    if (i < 0 || i > m_nCount || nSize < 0)
        return FALSE;
    if (IsUniform() && (nSize == m_nUniform || m_nCount == 0)) {
        if (m_nCount == 0)
            m_nUniform = nSize;
        ++m_nCount;
        Invalidate();
        return TRUE;
    }
    MakeExplicit();
    m_sizes.insert(m_sizes.begin() + i, nSize);
    ++m_nCount;
    Invalidate();
    return TRUE;
}

BOOL KxUiGridAxis2::Remove(int i)
{
    if (i < 0 || i >= m_nCount)
        return FALSE;
    if (!IsUniform())
        m_sizes.erase(m_sizes.begin() + i);
    --m_nCount;
    Invalidate();
    return TRUE;
}

void KxUiGridAxis2::SetAllSizes(int nSize)
{
    m_nDefault = m_nUniform = nSize < 0 ? 0 : nSize;
    std::vector<int>().swap(m_sizes);
    Invalidate();
}

void KxUiGridAxis2::Swap(int i, int j)
{
    if (i < 0 || j < 0 || i >= m_nCount || j >= m_nCount || IsUniform() || i == j)
        return;
    std::swap(m_sizes[static_cast<size_t>(i)], m_sizes[static_cast<size_t>(j)]);
    if ((i >> kBlockShift) != (j >> kBlockShift))
        Invalidate();
}

void KxUiGridAxis2::Rebuild() const
{
    if (!m_bDirty)
        return;
    m_prefix.clear();
    if (!IsUniform()) {
        const size_t nBlocks = (static_cast<size_t>(m_nCount) + kBlock - 1) / kBlock;
        m_prefix.resize(nBlocks + 1);
        LONGLONG sum = 0;
        for (size_t b = 0; b < nBlocks; ++b) {
            m_prefix[b] = sum;
            const size_t end = std::min(static_cast<size_t>(m_nCount), (b + 1) * kBlock);
            for (size_t k = b * kBlock; k < end; ++k)
                sum += m_sizes[k];
        }
        m_prefix[nBlocks] = sum;
    }
    m_bDirty = false;
}

LONGLONG KxUiGridAxis2::GetStart(int i) const
{
    if (i <= 0)
        return 0;
    if (i > m_nCount)
        i = m_nCount;
    if (IsUniform())
        return static_cast<LONGLONG>(i) * m_nUniform;
    Rebuild();
    const size_t b = static_cast<size_t>(i) >> kBlockShift;
    LONGLONG sum = m_prefix[b];
    for (size_t k = b << kBlockShift; k < static_cast<size_t>(i); ++k)
        sum += m_sizes[k];
    return sum;
}

int KxUiGridAxis2::IndexAt(LONGLONG offset) const
{
    if (offset < 0 || offset >= GetTotal())
        return -1;
    if (IsUniform())
        return m_nUniform > 0 ? static_cast<int>(offset / m_nUniform) : -1;
    Rebuild();
    // The last block whose start is <= offset, then a walk inside it.
    const size_t nBlocks = m_prefix.size() - 1;
    size_t lo = 0, hi = nBlocks;  // answer in [lo, hi)
    while (hi - lo > 1) {
        const size_t mid = (lo + hi) / 2;
        if (m_prefix[mid] <= offset)
            lo = mid;
        else
            hi = mid;
    }
    LONGLONG sum = m_prefix[lo];
    const size_t end = std::min(static_cast<size_t>(m_nCount), (lo + 1) * kBlock);
    for (size_t k = lo * kBlock; k < end; ++k) {
        sum += m_sizes[k];
        if (sum > offset)
            return static_cast<int>(k);
    }
    return -1;
}

int KxUiGridAxis2::FirstVisibleFrom(int i) const
{
    if (i < 0)
        i = 0;
    if (IsUniform())
        return (i < m_nCount && m_nUniform > 0) ? i : -1;
    for (; i < m_nCount; ++i)
        if (m_sizes[static_cast<size_t>(i)] > 0)
            return i;
    return -1;
}

int KxUiGridAxis2::LastVisibleFrom(int i, int nLowest) const
{
    if (i >= m_nCount)
        i = m_nCount - 1;
    if (nLowest < 0)
        nLowest = 0;
    if (IsUniform())
        return (i >= nLowest && m_nUniform > 0) ? i : -1;
    for (; i >= nLowest; --i)
        if (m_sizes[static_cast<size_t>(i)] > 0)
            return i;
    return -1;
}

int KxUiGridAxis2::GetMaxTop(int nExtent) const
{
    const int nFixed = GetFixedCount();
    const LONGLONG total = GetTotal();
    const LONGLONG want = total - (nExtent < 0 ? 0 : nExtent);
    if (want <= GetFixedTotal())
        return nFixed;
    int t = IndexAt(want);
    if (t < 0)
        t = m_nCount - 1;  // no room at all: the last entry is the top
    else if (GetStart(t) < want)
        ++t;  // the entry holding the offset would not fit whole
    if (t >= m_nCount)
        t = m_nCount - 1;
    return t < nFixed ? nFixed : t;
}

int KxUiGridAxis2::PageForward(int nTop, int nExtent) const
{
    const int nMax = GetMaxTop(nExtent);
    if (nTop >= nMax)
        return nMax;
    // The first entry not wholly inside the page becomes the top.
    const LONGLONG end = GetStart(nTop) + (nExtent > 0 ? nExtent : 0);
    int t = IndexAt(end);
    if (t < 0)
        return nMax;
    if (t == nTop)
        t = nTop + 1;  // an entry larger than the page: move on by one
    return t > nMax ? nMax : t;
}

int KxUiGridAxis2::PageBack(int nTop, int nExtent) const
{
    const int nFixed = GetFixedCount();
    if (nTop <= nFixed)
        return nFixed;
    // The smallest top whose page ends at the old top.
    const LONGLONG want = GetStart(nTop) - (nExtent > 0 ? nExtent : 0);
    if (want <= GetFixedTotal())
        return nFixed;
    int t = IndexAt(want);
    if (t < 0)
        return nFixed;
    if (GetStart(t) < want)
        ++t;
    if (t >= nTop)
        t = nTop - 1;
    return t < nFixed ? nFixed : t;
}

size_t KxUiGridAxis2::GetStorageBytes() const
{
    return m_sizes.capacity() * sizeof(int) + m_prefix.capacity() * sizeof(LONGLONG);
}
