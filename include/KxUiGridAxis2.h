// KxUiGridAxis2: the rows (or the columns) of a grid as a line of sizes, with the first
// nFixed of them fixed (they do not scroll). A size of 0 hides its row or column.
//
// Model: while every size equals the default size nothing is stored per entry, so a virtual
// grid of ten million rows costs nothing; the first differing size stores one 32-bit value
// per entry plus one 64-bit running sum per block of entries. Every offset is 64-bit, so
// totals far beyond 2^31 pixels are exact, and offset to index is a binary search over the
// block sums (logarithmic), never a walk over all entries.
//
//     KxUiGridAxis2 rows;
//     rows.SetDefaultSize(20);
//     rows.SetCount(10000000);
//     rows.SetFixedCount(1);
//     int top = rows.GetMaxTop(580);        // the top row that shows the last row in 580 px
//     LONGLONG y = rows.GetStart(top);      // its offset from the top of row 0
#pragma once
#include "KxUiDef.h"
#include <vector>

class KXUI_API KxUiGridAxis2 {
public:
    KxUiGridAxis2();

    // ---- entries ----
    // New entries take the default size; negative counts are refused (FALSE).
    BOOL SetCount(int nCount);
    int GetCount() const { return m_nCount; }
    // Clamped to the count; negative refused.
    BOOL SetFixedCount(int nFixed);
    int GetFixedCount() const { return m_nFixed < m_nCount ? m_nFixed : m_nCount; }
    // Size of entries created from now on (existing ones keep theirs).
    void SetDefaultSize(int nSize);
    int GetDefaultSize() const { return m_nDefault; }
    // 0 outside the entries.
    int GetSize(int i) const;
    // FALSE outside the entries or for a negative size.
    BOOL SetSize(int i, int nSize);
    // Inserts one entry before i (i == count appends); FALSE outside 0..count.
    BOOL Insert(int i, int nSize);
    BOOL Remove(int i);
    // Every entry takes nSize (and so does every later one): storage is released.
    void SetAllSizes(int nSize);
    // Exchanges the sizes of two entries.
    void Swap(int i, int j);

    // ---- offsets ----
    // Sum of the sizes before entry i (i may equal the count: the total).
    LONGLONG GetStart(int i) const;
    LONGLONG GetTotal() const { return GetStart(m_nCount); }
    LONGLONG GetFixedTotal() const { return GetStart(GetFixedCount()); }
    // The entry whose span holds the offset (start <= offset < start + size); -1 outside.
    // Hidden entries are never found.
    int IndexAt(LONGLONG offset) const;

    // ---- walking ----
    // The first entry at or after i with a size > 0; -1 when none.
    int FirstVisibleFrom(int i) const;
    // The last entry at or before i with a size > 0, not below nLowest; -1 when none.
    int LastVisibleFrom(int i, int nLowest) const;
    // The top of the scrolling part that shows the last entries in nExtent pixels: the
    // smallest non-fixed entry t with GetTotal() - GetStart(t) <= nExtent.
    int GetMaxTop(int nExtent) const;
    // The top after a page forward / back from nTop with nExtent pixels of scrolling view.
    int PageForward(int nTop, int nExtent) const;
    int PageBack(int nTop, int nExtent) const;

    // Storage in use beyond the object itself, in bytes (0 while uniform).
    size_t GetStorageBytes() const;

private:
    enum { kBlockShift = 9, kBlock = 1 << kBlockShift };
    bool IsUniform() const { return m_sizes.empty(); }
    void MakeExplicit();
    void Invalidate() { m_bDirty = true; }
    void Rebuild() const;

    int m_nCount;
    int m_nFixed;
    int m_nDefault;
    int m_nUniform;                          // the size every entry has while m_sizes is empty
    std::vector<int> m_sizes;                // empty while uniform
    mutable std::vector<LONGLONG> m_prefix;  // sum of the blocks before each block, plus the total
    mutable bool m_bDirty;
};
