#include "KxUiCellID2.h"
#include <algorithm>

KxUiCellRange2 KxUiCellRange2::Intersect(const KxUiCellRange2& rhs) const
{
    if (!IsValid() || !rhs.IsValid())
        return KxUiCellRange2();
    KxUiCellRange2 r(std::max(m_nMinRow, rhs.m_nMinRow), std::max(m_nMinCol, rhs.m_nMinCol),
                     std::min(m_nMaxRow, rhs.m_nMaxRow), std::min(m_nMaxCol, rhs.m_nMaxCol));
    return r.IsValid() ? r : KxUiCellRange2();
}

LONGLONG KxUiCellRange2::Count() const
{
    if (!IsValid())
        return 0;
    return static_cast<LONGLONG>(GetRowSpan()) * GetColSpan();
}
