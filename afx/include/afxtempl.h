// Collection templates: CArray, CList, CMap, the typed pointer wrappers and the element helpers
// (ConstructElements, DestructElements, CopyElements, SerializeElements, CompareElements, HashKey).
#pragma once
#include "afx.h"
#include "afxplex_.h"
#include <new>
#include <string.h>
#include <stdlib.h>
#include <stdint.h>
#include <type_traits>
#include <utility>

#ifndef BEFORE_START_POSITION
struct __POSITION {};
typedef __POSITION* POSITION;
#define BEFORE_START_POSITION ((POSITION)-1L)
#endif

namespace AfxCollImpl {

// Element types that can be moved with memcpy and need no construction or destruction code.
template <class T>
constexpr bool IsRaw = std::is_trivially_copyable<T>::value;

// Bytes for nCount elements of T, or an invalid-argument exception when that overflows.
template <class T>
inline size_t ByteCount(INT_PTR nCount)
{
    if (nCount < 0 || static_cast<size_t>(nCount) > SIZE_MAX / sizeof(T))
        AfxThrowInvalidArgException();
    return static_cast<size_t>(nCount) * sizeof(T);
}

template <class T>
inline T* Allocate(INT_PTR nCount)
{
    T* p = static_cast<T*>(malloc(ByteCount<T>(nCount)));
    if (p == nullptr)
        AfxThrowMemoryException();
    return p;
}

// Moves n constructed elements from src into uninitialised dst (ascending order, so dst may
// overlap src when dst < src); the source slots are left destroyed.
template <class T>
inline void RelocateUp(T* dst, T* src, INT_PTR n)
{
    if constexpr (IsRaw<T>) {
        if (n > 0)
            memmove(static_cast<void*>(dst), static_cast<const void*>(src), n * sizeof(T));
    } else {
        for (INT_PTR i = 0; i < n; ++i) {
            ::new (static_cast<void*>(dst + i)) T(static_cast<T&&>(src[i]));
            src[i].~T();
        }
    }
}

// As RelocateUp, in descending order, for dst > src.
template <class T>
inline void RelocateDown(T* dst, T* src, INT_PTR n)
{
    if constexpr (IsRaw<T>) {
        if (n > 0)
            memmove(static_cast<void*>(dst), static_cast<const void*>(src), n * sizeof(T));
    } else {
        for (INT_PTR i = n - 1; i >= 0; --i) {
            ::new (static_cast<void*>(dst + i)) T(static_cast<T&&>(src[i]));
            src[i].~T();
        }
    }
}

// Constructs *p from an argument of the collection's ARG_TYPE: directly when TYPE allows it,
// otherwise default construction followed by assignment.
template <class T, class A>
inline void ConstructFrom(T* p, A&& arg)
{
    if constexpr (std::is_constructible<T, A&&>::value) {
        ::new (static_cast<void*>(p)) T(static_cast<A&&>(arg));
    } else {
        ::new (static_cast<void*>(p)) T;
        *p = static_cast<A&&>(arg);
    }
}

// Sizes of the hash table when a map grows by itself: primes, each about twice the one before.
inline UINT NextHashTableSize(UINT_PTR nMin)
{
    static const UINT primes[] = {17u, 37u, 79u, 163u, 331u, 673u, 1361u, 2729u, 5471u, 10949u,
        21911u, 43853u, 87719u, 175447u, 350899u, 701819u, 1403641u, 2807303u, 5614657u,
        11229331u, 22458671u, 44917381u, 89834777u, 179669557u, 359339171u, 718678369u,
        1437356741u};
    for (UINT p : primes)
        if (p >= nMin)
            return p;
    return primes[sizeof(primes) / sizeof(primes[0]) - 1];
}

} // namespace AfxCollImpl

// ---------------------------------------------------------------------------------------------
// Element helpers. Collections call these for every element, so a program can specialise them.

// Default-constructs nCount elements in raw storage; the storage is zeroed first, as in the
// classic framework, so that members a constructor leaves alone start at zero.
template <class TYPE>
inline void AFXAPI ConstructElements(TYPE* pElements, INT_PTR nCount)
{
    if (nCount <= 0)
        return;
    memset(static_cast<void*>(pElements), 0, static_cast<size_t>(nCount) * sizeof(TYPE));
    if constexpr (!std::is_trivially_default_constructible<TYPE>::value)
        for (INT_PTR i = 0; i < nCount; ++i)
            ::new (static_cast<void*>(pElements + i)) TYPE;
}

template <class TYPE>
inline void AFXAPI DestructElements(TYPE* pElements, INT_PTR nCount)
{
    if constexpr (!std::is_trivially_destructible<TYPE>::value)
        for (INT_PTR i = 0; i < nCount; ++i)
            pElements[i].~TYPE();
}

// Assigns nCount source elements to constructed destination elements.
template <class TYPE>
inline void AFXAPI CopyElements(TYPE* pDest, const TYPE* pSrc, INT_PTR nCount)
{
    if constexpr (AfxCollImpl::IsRaw<TYPE>) {
        if (nCount > 0)
            memmove(static_cast<void*>(pDest), static_cast<const void*>(pSrc),
                    static_cast<size_t>(nCount) * sizeof(TYPE));
    } else {
        for (INT_PTR i = 0; i < nCount; ++i)
            pDest[i] = pSrc[i];
    }
}

namespace AfxCollImpl {
// Whether "ar << x" and "ar >> x" exist for T.
template <class T, class = void>
struct HasArchiveOps : std::false_type {};
template <class T>
struct HasArchiveOps<T, std::void_t<decltype(std::declval<CArchive&>() << std::declval<const T&>()),
                                    decltype(std::declval<CArchive&>() >> std::declval<T&>())>>
    : std::true_type {};
} // namespace AfxCollImpl

// Stores or loads nCount elements: a type with archive operators (CString, CObject*, ...)
// element by element through them, numbers and other plain data as their bytes (the same
// little-endian layout). A type with neither cannot be stored: the attempt raises
// AfxThrowNotSupportedException (specialise SerializeElements for it).
template <class TYPE>
void AFXAPI SerializeElements(CArchive& ar, TYPE* pElements, INT_PTR nCount)
{
    if (nCount <= 0)
        return;
    if constexpr (AfxCollImpl::HasArchiveOps<TYPE>::value && !std::is_arithmetic<TYPE>::value) {
        for (INT_PTR i = 0; i < nCount; ++i) {
            if (ar.IsStoring())
                ar << pElements[i];
            else
                ar >> pElements[i];
        }
    } else if constexpr (AfxCollImpl::IsRaw<TYPE>) {
        BYTE* p = reinterpret_cast<BYTE*>(pElements);
        size_t nBytes = AfxCollImpl::ByteCount<TYPE>(nCount);
        while (nBytes > 0) {
            UINT nChunk = nBytes > 0x40000000u ? 0x40000000u : static_cast<UINT>(nBytes);
            if (ar.IsStoring())
                ar.Write(p, nChunk);
            else
                ar.EnsureRead(p, nChunk);
            p += nChunk;
            nBytes -= nChunk;
        }
    } else {
        AfxThrowNotSupportedException();
    }
}

template <class TYPE, class ARG_TYPE>
inline BOOL AFXAPI CompareElements(const TYPE* pElement1, const ARG_TYPE* pElement2)
{
    return *pElement1 == *pElement2;
}

// Hash of a map key. Text keys (LPCWSTR, LPCSTR, CString) hash their characters; a pointer or
// pointer-sized integer hashes to its value shifted right by 4 (heap blocks are 16-byte aligned);
// a smaller integer hashes to its value, which spreads runs of keys evenly over a prime-sized table.
template <class ARG_KEY>
inline UINT AFXAPI HashKey(ARG_KEY key)
{
    typedef typename std::decay<ARG_KEY>::type K;
    if constexpr (std::is_convertible<ARG_KEY, LPCWSTR>::value ||
                  std::is_convertible<ARG_KEY, LPCSTR>::value) {
        typedef typename std::conditional<std::is_convertible<ARG_KEY, LPCWSTR>::value, LPCWSTR,
                                          LPCSTR>::type PCSTR_T;
        PCSTR_T psz = key;
        UINT nHash = 0;
        if (psz != nullptr)
            while (*psz)
                nHash = (nHash << 5) + nHash + static_cast<UINT>(*psz++);
        return nHash;
    } else if constexpr (std::is_pointer<K>::value) {
        return static_cast<UINT>(reinterpret_cast<UINT_PTR>(key) >> 4);
    } else {
        static_assert(std::is_integral<K>::value || std::is_enum<K>::value,
                      "HashKey needs a specialisation for this key type");
        if constexpr (sizeof(K) == sizeof(void*))
            return static_cast<UINT>(static_cast<UINT_PTR>(key) >> 4);
        else
            return static_cast<UINT>(key);
    }
}

// ---------------------------------------------------------------------------------------------
// CArray: a growable array of constructed elements. Index errors raise AfxThrowInvalidArgException.

template <class TYPE, class ARG_TYPE = const TYPE&>
class CArray : public CObject {
public:
    CArray() = default;
    ~CArray() override;

    INT_PTR GetSize() const { return m_nSize; }
    INT_PTR GetCount() const { return m_nSize; }
    BOOL IsEmpty() const { return m_nSize == 0; }
    INT_PTR GetUpperBound() const { return m_nSize - 1; }
    // Resizes to nNewSize elements; nGrowBy (when >= 0) is the least number of slots added when
    // the array has to grow. New elements are default-constructed on zeroed storage.
    void SetSize(INT_PTR nNewSize, INT_PTR nGrowBy = -1);

    // Releases the slots beyond the current size.
    void FreeExtra();
    void RemoveAll() { SetSize(0, -1); }

    const TYPE& GetAt(INT_PTR nIndex) const { return m_pData[CheckIndex(nIndex)]; }
    TYPE& GetAt(INT_PTR nIndex) { return m_pData[CheckIndex(nIndex)]; }
    void SetAt(INT_PTR nIndex, ARG_TYPE newElement) { m_pData[CheckIndex(nIndex)] = newElement; }
    const TYPE& ElementAt(INT_PTR nIndex) const { return m_pData[CheckIndex(nIndex)]; }
    TYPE& ElementAt(INT_PTR nIndex) { return m_pData[CheckIndex(nIndex)]; }

    const TYPE* GetData() const { return m_pData; }
    TYPE* GetData() { return m_pData; }

    // Sets the element, growing the array first when nIndex is at or past its end.
    void SetAtGrow(INT_PTR nIndex, ARG_TYPE newElement);
    INT_PTR Add(ARG_TYPE newElement);
    // Appends a copy of src (which must be another array); returns the index of its first element.
    INT_PTR Append(const CArray& src);
    void Copy(const CArray& src);

    const TYPE& operator[](INT_PTR nIndex) const { return GetAt(nIndex); }
    TYPE& operator[](INT_PTR nIndex) { return ElementAt(nIndex); }

    // Inserts nCount copies of newElement at nIndex (past the end: the gap is default-constructed).
    void InsertAt(INT_PTR nIndex, ARG_TYPE newElement, INT_PTR nCount = 1);
    void RemoveAt(INT_PTR nIndex, INT_PTR nCount = 1);
    void InsertAt(INT_PTR nStartIndex, CArray* pNewArray);

    void Serialize(CArchive& ar) override;

protected:
    TYPE* m_pData = nullptr;
    INT_PTR m_nSize = 0;
    INT_PTR m_nMaxSize = 0;
    INT_PTR m_nGrowBy = 0;

private:
    INT_PTR CheckIndex(INT_PTR nIndex) const
    {
        if (nIndex < 0 || nIndex >= m_nSize)
            AfxThrowInvalidArgException();
        return nIndex;
    }
    bool Contains(const void* p) const
    {
        return m_pData != nullptr && p >= static_cast<const void*>(m_pData) &&
               p < static_cast<const void*>(m_pData + m_nSize);
    }
    // Capacity for at least nNewSize elements, by MFC's growth step (the grow-by value, or
    // size/8 clamped to 4..1024 when none is set) and never less than the current capacity, so
    // that repeated appends stay linear (the grow-by value is a minimum).
    INT_PTR GrownCapacity(INT_PTR nNewSize) const;
    void Reallocate(INT_PTR nNewMax);
    // Opens nCount uninitialised slots at nIndex (<= m_nSize) and counts them in the size.
    TYPE* OpenGap(INT_PTR nIndex, INT_PTR nCount);
    INT_PTR AddSlow(ARG_TYPE newElement);
};

template <class TYPE, class ARG_TYPE>
CArray<TYPE, ARG_TYPE>::~CArray()
{
    DestructElements<TYPE>(m_pData, m_nSize);
    free(m_pData);
}

template <class TYPE, class ARG_TYPE>
INT_PTR CArray<TYPE, ARG_TYPE>::GrownCapacity(INT_PTR nNewSize) const
{
    INT_PTR nGrowBy = m_nGrowBy;
    if (nGrowBy == 0) {
        nGrowBy = m_nSize / 8;
        nGrowBy = nGrowBy < 4 ? 4 : (nGrowBy > 1024 ? 1024 : nGrowBy);
    }
    if (nGrowBy < m_nMaxSize)
        nGrowBy = m_nMaxSize;
    INT_PTR nNewMax = m_nMaxSize + nGrowBy;
    return nNewMax < nNewSize ? nNewSize : nNewMax;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::Reallocate(INT_PTR nNewMax)
{
    if constexpr (AfxCollImpl::IsRaw<TYPE>) {
        void* p = realloc(m_pData, AfxCollImpl::ByteCount<TYPE>(nNewMax));
        if (p == nullptr)
            AfxThrowMemoryException();
        m_pData = static_cast<TYPE*>(p);
    } else {
        TYPE* pNew = AfxCollImpl::Allocate<TYPE>(nNewMax);
        AfxCollImpl::RelocateUp(pNew, m_pData, m_nSize);
        free(m_pData);
        m_pData = pNew;
    }
    m_nMaxSize = nNewMax;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::SetSize(INT_PTR nNewSize, INT_PTR nGrowBy)
{
    if (nNewSize < 0)
        AfxThrowInvalidArgException();
    if (nGrowBy >= 0)
        m_nGrowBy = nGrowBy;

    if (nNewSize == 0) {
        DestructElements<TYPE>(m_pData, m_nSize);
        free(m_pData);
        m_pData = nullptr;
        m_nSize = m_nMaxSize = 0;
    } else if (m_pData == nullptr) {
        INT_PTR nAlloc = nNewSize < m_nGrowBy ? m_nGrowBy : nNewSize;
        m_pData = AfxCollImpl::Allocate<TYPE>(nAlloc);
        m_nMaxSize = nAlloc;
        ConstructElements<TYPE>(m_pData, nNewSize);
        m_nSize = nNewSize;
    } else if (nNewSize <= m_nMaxSize) {
        if (nNewSize > m_nSize)
            ConstructElements<TYPE>(m_pData + m_nSize, nNewSize - m_nSize);
        else
            DestructElements<TYPE>(m_pData + nNewSize, m_nSize - nNewSize);
        m_nSize = nNewSize;
    } else {
        Reallocate(GrownCapacity(nNewSize));
        ConstructElements<TYPE>(m_pData + m_nSize, nNewSize - m_nSize);
        m_nSize = nNewSize;
    }
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::FreeExtra()
{
    if (m_nSize == m_nMaxSize)
        return;
    if (m_nSize == 0) {
        free(m_pData);
        m_pData = nullptr;
        m_nMaxSize = 0;
    } else {
        Reallocate(m_nSize);
    }
}

template <class TYPE, class ARG_TYPE>
TYPE* CArray<TYPE, ARG_TYPE>::OpenGap(INT_PTR nIndex, INT_PTR nCount)
{
    if (nCount > PTRDIFF_MAX / static_cast<INT_PTR>(sizeof(TYPE)) - m_nSize)
        AfxThrowInvalidArgException();
    if (m_nSize + nCount > m_nMaxSize)
        Reallocate(GrownCapacity(m_nSize + nCount));
    AfxCollImpl::RelocateDown(m_pData + nIndex + nCount, m_pData + nIndex, m_nSize - nIndex);
    m_nSize += nCount;
    return m_pData + nIndex;
}

template <class TYPE, class ARG_TYPE>
INT_PTR CArray<TYPE, ARG_TYPE>::Add(ARG_TYPE newElement)
{
    if (m_nSize < m_nMaxSize) {
        AfxCollImpl::ConstructFrom(m_pData + m_nSize, newElement);
        return m_nSize++;
    }
    return AddSlow(newElement);
}

template <class TYPE, class ARG_TYPE>
__attribute__((noinline)) INT_PTR CArray<TYPE, ARG_TYPE>::AddSlow(ARG_TYPE newElement)
{
    // The new element may be one of ours: copy it before the storage moves.
    if (Contains(&newElement)) {
        TYPE copy(newElement);
        OpenGap(m_nSize, 1);
        ::new (static_cast<void*>(m_pData + m_nSize - 1)) TYPE(static_cast<TYPE&&>(copy));
    } else {
        OpenGap(m_nSize, 1);
        AfxCollImpl::ConstructFrom(m_pData + m_nSize - 1, newElement);
    }
    return m_nSize - 1;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::SetAtGrow(INT_PTR nIndex, ARG_TYPE newElement)
{
    if (nIndex < 0)
        AfxThrowInvalidArgException();
    if (nIndex >= m_nSize) {
        if (Contains(&newElement)) {
            TYPE copy(newElement);
            SetSize(nIndex + 1, -1);
            m_pData[nIndex] = copy;
            return;
        }
        SetSize(nIndex + 1, -1);
    }
    m_pData[nIndex] = newElement;
}

template <class TYPE, class ARG_TYPE>
INT_PTR CArray<TYPE, ARG_TYPE>::Append(const CArray& src)
{
    if (this == &src)
        AfxThrowInvalidArgException();
    INT_PTR nOldSize = m_nSize;
    TYPE* p = OpenGap(m_nSize, src.m_nSize);
    if constexpr (AfxCollImpl::IsRaw<TYPE>) {
        if (src.m_nSize > 0)
            memcpy(static_cast<void*>(p), src.m_pData, src.m_nSize * sizeof(TYPE));
    } else {
        for (INT_PTR i = 0; i < src.m_nSize; ++i)
            ::new (static_cast<void*>(p + i)) TYPE(src.m_pData[i]);
    }
    return nOldSize;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::Copy(const CArray& src)
{
    if (this == &src)
        return;
    SetSize(src.m_nSize, -1);
    CopyElements<TYPE>(m_pData, src.m_pData, src.m_nSize);
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::InsertAt(INT_PTR nIndex, ARG_TYPE newElement, INT_PTR nCount)
{
    if (nIndex < 0 || nCount <= 0)
        AfxThrowInvalidArgException();
    if (Contains(&newElement)) {
        TYPE copy(newElement);
        InsertAt(nIndex, copy, nCount);
        return;
    }
    if (nIndex > m_nSize)
        SetSize(nIndex, -1);
    TYPE* p = OpenGap(nIndex, nCount);
    for (INT_PTR i = 0; i < nCount; ++i)
        AfxCollImpl::ConstructFrom(p + i, newElement);
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::InsertAt(INT_PTR nStartIndex, CArray* pNewArray)
{
    if (pNewArray == nullptr || nStartIndex < 0)
        AfxThrowInvalidArgException();
    if (pNewArray->m_nSize == 0)
        return;
    if (pNewArray == this) {
        CArray copy;
        copy.Copy(*this);
        InsertAt(nStartIndex, &copy);
        return;
    }
    if (nStartIndex > m_nSize)
        SetSize(nStartIndex, -1);
    TYPE* p = OpenGap(nStartIndex, pNewArray->m_nSize);
    for (INT_PTR i = 0; i < pNewArray->m_nSize; ++i)
        ::new (static_cast<void*>(p + i)) TYPE(pNewArray->m_pData[i]);
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::RemoveAt(INT_PTR nIndex, INT_PTR nCount)
{
    if (nIndex < 0 || nCount < 0 || nIndex > m_nSize || nCount > m_nSize - nIndex)
        AfxThrowInvalidArgException();
    DestructElements<TYPE>(m_pData + nIndex, nCount);
    AfxCollImpl::RelocateUp(m_pData + nIndex, m_pData + nIndex + nCount, m_nSize - nIndex - nCount);
    m_nSize -= nCount;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::Serialize(CArchive& ar)
{
    CObject::Serialize(ar);
    if (ar.IsStoring()) {
        ar.WriteCount(m_nSize);
        SerializeElements<TYPE>(ar, m_pData, m_nSize);
        return;
    }
    // Load in bounded steps, so that a corrupt count runs into the end of the data instead of
    // asking for an enormous block first.
    DWORD_PTR nCount = ar.ReadCount();
    RemoveAll();
    const INT_PTR nStep = sizeof(TYPE) >= 65536 ? 1 : 65536 / static_cast<INT_PTR>(sizeof(TYPE));
    while (static_cast<DWORD_PTR>(m_nSize) < nCount) {
        DWORD_PTR nLeft = nCount - m_nSize;
        INT_PTR n = nLeft < static_cast<DWORD_PTR>(nStep) ? static_cast<INT_PTR>(nLeft) : nStep;
        INT_PTR nDone = m_nSize;
        SetSize(nDone + n, -1);
        SerializeElements<TYPE>(ar, m_pData + nDone, n);
    }
}

// ---------------------------------------------------------------------------------------------
// CList: a doubly linked list addressed by POSITIONs; nodes come from blocks of nBlockSize.

template <class TYPE, class ARG_TYPE = const TYPE&>
class CList : public CObject {
protected:
    struct CNode {
        CNode* pNext;
        CNode* pPrev;
        TYPE data;
    };

public:
    explicit CList(INT_PTR nBlockSize = 10) : m_nBlockSize(nBlockSize < 1 ? 10 : nBlockSize) {}
    ~CList() override { RemoveAll(); }

    INT_PTR GetCount() const { return m_nCount; }
    INT_PTR GetSize() const { return m_nCount; }
    BOOL IsEmpty() const { return m_nCount == 0; }

    // Head and tail of a non-empty list (an empty one raises AfxThrowInvalidArgException).
    TYPE& GetHead() { return CheckNode(m_pNodeHead)->data; }
    const TYPE& GetHead() const { return CheckNode(m_pNodeHead)->data; }
    TYPE& GetTail() { return CheckNode(m_pNodeTail)->data; }
    const TYPE& GetTail() const { return CheckNode(m_pNodeTail)->data; }
    TYPE RemoveHead();
    TYPE RemoveTail();

    POSITION AddHead(ARG_TYPE newElement);
    POSITION AddTail(ARG_TYPE newElement);
    // Adds copies of the other list's elements, keeping their order.
    void AddHead(CList* pNewList);
    void AddTail(CList* pNewList);
    void RemoveAll();

    POSITION GetHeadPosition() const { return reinterpret_cast<POSITION>(m_pNodeHead); }
    POSITION GetTailPosition() const { return reinterpret_cast<POSITION>(m_pNodeTail); }
    // Returns the element at rPosition and moves rPosition to the next (previous) one.
    TYPE& GetNext(POSITION& rPosition)
    {
        CNode* p = Node(rPosition);
        rPosition = reinterpret_cast<POSITION>(p->pNext);
        return p->data;
    }
    const TYPE& GetNext(POSITION& rPosition) const
    {
        CNode* p = Node(rPosition);
        rPosition = reinterpret_cast<POSITION>(p->pNext);
        return p->data;
    }
    TYPE& GetPrev(POSITION& rPosition)
    {
        CNode* p = Node(rPosition);
        rPosition = reinterpret_cast<POSITION>(p->pPrev);
        return p->data;
    }
    const TYPE& GetPrev(POSITION& rPosition) const
    {
        CNode* p = Node(rPosition);
        rPosition = reinterpret_cast<POSITION>(p->pPrev);
        return p->data;
    }
    TYPE& GetAt(POSITION position) { return Node(position)->data; }
    const TYPE& GetAt(POSITION position) const { return Node(position)->data; }
    void SetAt(POSITION pos, ARG_TYPE newElement) { Node(pos)->data = newElement; }
    void RemoveAt(POSITION position);

    POSITION InsertBefore(POSITION position, ARG_TYPE newElement);
    POSITION InsertAfter(POSITION position, ARG_TYPE newElement);

    // First element equal to searchValue after startAfter (from the head when null), or null.
    POSITION Find(ARG_TYPE searchValue, POSITION startAfter = nullptr) const;
    // Position of the nIndex-th element (0-based), or null when out of range.
    POSITION FindIndex(INT_PTR nIndex) const;

    void Serialize(CArchive& ar) override;

protected:
    CNode* m_pNodeHead = nullptr;
    CNode* m_pNodeTail = nullptr;
    INT_PTR m_nCount = 0;
    CNode* m_pNodeFree = nullptr;
    CPlex* m_pBlocks = nullptr;
    INT_PTR m_nBlockSize;

    CNode* NewNode(CNode* pPrev, CNode* pNext, ARG_TYPE newElement);
    void FreeNode(CNode* pNode);

private:
    static CNode* CheckNode(CNode* p)
    {
        if (p == nullptr)
            AfxThrowInvalidArgException();
        return p;
    }
    static CNode* Node(POSITION pos)
    {
        if (pos == nullptr || pos == BEFORE_START_POSITION)
            AfxThrowInvalidArgException();
        return reinterpret_cast<CNode*>(pos);
    }
};

template <class TYPE, class ARG_TYPE>
typename CList<TYPE, ARG_TYPE>::CNode* CList<TYPE, ARG_TYPE>::NewNode(CNode* pPrev, CNode* pNext,
                                                                     ARG_TYPE newElement)
{
    if (m_pNodeFree == nullptr) {
        CPlex* pBlock = CPlex::Create(m_pBlocks, m_nBlockSize, sizeof(CNode));
        CNode* pNode = static_cast<CNode*>(pBlock->data()) + m_nBlockSize - 1;
        for (INT_PTR i = m_nBlockSize - 1; i >= 0; --i, --pNode) {
            pNode->pNext = m_pNodeFree;
            m_pNodeFree = pNode;
        }
    }
    CNode* pNode = m_pNodeFree;
    AfxCollImpl::ConstructFrom(&pNode->data, newElement);
    m_pNodeFree = m_pNodeFree->pNext;
    pNode->pPrev = pPrev;
    pNode->pNext = pNext;
    ++m_nCount;
    return pNode;
}

template <class TYPE, class ARG_TYPE>
void CList<TYPE, ARG_TYPE>::FreeNode(CNode* pNode)
{
    pNode->data.~TYPE();
    pNode->pNext = m_pNodeFree;
    m_pNodeFree = pNode;
    // The last element gone: give the blocks back.
    if (--m_nCount == 0)
        RemoveAll();
}

template <class TYPE, class ARG_TYPE>
void CList<TYPE, ARG_TYPE>::RemoveAll()
{
    for (CNode* p = m_pNodeHead; p != nullptr; p = p->pNext)
        p->data.~TYPE();
    m_nCount = 0;
    m_pNodeHead = m_pNodeTail = m_pNodeFree = nullptr;
    if (m_pBlocks != nullptr)
        m_pBlocks->FreeDataChain();
    m_pBlocks = nullptr;
}

template <class TYPE, class ARG_TYPE>
POSITION CList<TYPE, ARG_TYPE>::AddHead(ARG_TYPE newElement)
{
    CNode* pNew = NewNode(nullptr, m_pNodeHead, newElement);
    if (m_pNodeHead != nullptr)
        m_pNodeHead->pPrev = pNew;
    else
        m_pNodeTail = pNew;
    m_pNodeHead = pNew;
    return reinterpret_cast<POSITION>(pNew);
}

template <class TYPE, class ARG_TYPE>
POSITION CList<TYPE, ARG_TYPE>::AddTail(ARG_TYPE newElement)
{
    CNode* pNew = NewNode(m_pNodeTail, nullptr, newElement);
    if (m_pNodeTail != nullptr)
        m_pNodeTail->pNext = pNew;
    else
        m_pNodeHead = pNew;
    m_pNodeTail = pNew;
    return reinterpret_cast<POSITION>(pNew);
}

template <class TYPE, class ARG_TYPE>
void CList<TYPE, ARG_TYPE>::AddHead(CList* pNewList)
{
    if (pNewList == nullptr)
        AfxThrowInvalidArgException();
    // Counted walk, so that adding a list to itself ends.
    INT_PTR n = pNewList->m_nCount;
    CNode* p = pNewList->m_pNodeTail;
    for (; n > 0; --n, p = p->pPrev)
        AddHead(p->data);
}

template <class TYPE, class ARG_TYPE>
void CList<TYPE, ARG_TYPE>::AddTail(CList* pNewList)
{
    if (pNewList == nullptr)
        AfxThrowInvalidArgException();
    INT_PTR n = pNewList->m_nCount;
    CNode* p = pNewList->m_pNodeHead;
    for (; n > 0; --n, p = p->pNext)
        AddTail(p->data);
}

template <class TYPE, class ARG_TYPE>
TYPE CList<TYPE, ARG_TYPE>::RemoveHead()
{
    CNode* pOld = CheckNode(m_pNodeHead);
    TYPE returnValue(static_cast<TYPE&&>(pOld->data));
    m_pNodeHead = pOld->pNext;
    if (m_pNodeHead != nullptr)
        m_pNodeHead->pPrev = nullptr;
    else
        m_pNodeTail = nullptr;
    FreeNode(pOld);
    return returnValue;
}

template <class TYPE, class ARG_TYPE>
TYPE CList<TYPE, ARG_TYPE>::RemoveTail()
{
    CNode* pOld = CheckNode(m_pNodeTail);
    TYPE returnValue(static_cast<TYPE&&>(pOld->data));
    m_pNodeTail = pOld->pPrev;
    if (m_pNodeTail != nullptr)
        m_pNodeTail->pNext = nullptr;
    else
        m_pNodeHead = nullptr;
    FreeNode(pOld);
    return returnValue;
}

template <class TYPE, class ARG_TYPE>
POSITION CList<TYPE, ARG_TYPE>::InsertBefore(POSITION position, ARG_TYPE newElement)
{
    if (position == nullptr)
        return AddHead(newElement);
    CNode* pOld = Node(position);
    CNode* pNew = NewNode(pOld->pPrev, pOld, newElement);
    if (pOld->pPrev != nullptr)
        pOld->pPrev->pNext = pNew;
    else
        m_pNodeHead = pNew;
    pOld->pPrev = pNew;
    return reinterpret_cast<POSITION>(pNew);
}

template <class TYPE, class ARG_TYPE>
POSITION CList<TYPE, ARG_TYPE>::InsertAfter(POSITION position, ARG_TYPE newElement)
{
    if (position == nullptr)
        return AddTail(newElement);
    CNode* pOld = Node(position);
    CNode* pNew = NewNode(pOld, pOld->pNext, newElement);
    if (pOld->pNext != nullptr)
        pOld->pNext->pPrev = pNew;
    else
        m_pNodeTail = pNew;
    pOld->pNext = pNew;
    return reinterpret_cast<POSITION>(pNew);
}

template <class TYPE, class ARG_TYPE>
void CList<TYPE, ARG_TYPE>::RemoveAt(POSITION position)
{
    CNode* pOld = Node(position);
    if (pOld == m_pNodeHead)
        m_pNodeHead = pOld->pNext;
    else
        pOld->pPrev->pNext = pOld->pNext;
    if (pOld == m_pNodeTail)
        m_pNodeTail = pOld->pPrev;
    else
        pOld->pNext->pPrev = pOld->pPrev;
    FreeNode(pOld);
}

template <class TYPE, class ARG_TYPE>
POSITION CList<TYPE, ARG_TYPE>::Find(ARG_TYPE searchValue, POSITION startAfter) const
{
    CNode* pNode = startAfter == nullptr ? m_pNodeHead : Node(startAfter)->pNext;
    for (; pNode != nullptr; pNode = pNode->pNext)
        if (CompareElements<TYPE, typename std::remove_reference<ARG_TYPE>::type>(&pNode->data,
                                                                                  &searchValue))
            return reinterpret_cast<POSITION>(pNode);
    return nullptr;
}

template <class TYPE, class ARG_TYPE>
POSITION CList<TYPE, ARG_TYPE>::FindIndex(INT_PTR nIndex) const
{
    if (nIndex < 0 || nIndex >= m_nCount)
        return nullptr;
    CNode* pNode = m_pNodeHead;
    while (nIndex-- > 0)
        pNode = pNode->pNext;
    return reinterpret_cast<POSITION>(pNode);
}

template <class TYPE, class ARG_TYPE>
void CList<TYPE, ARG_TYPE>::Serialize(CArchive& ar)
{
    CObject::Serialize(ar);
    if (ar.IsStoring()) {
        ar.WriteCount(m_nCount);
        for (CNode* p = m_pNodeHead; p != nullptr; p = p->pNext)
            SerializeElements<TYPE>(ar, &p->data, 1);
        return;
    }
    DWORD_PTR nNewCount = ar.ReadCount();
    while (nNewCount-- > 0) {
        TYPE newData[1];
        SerializeElements<TYPE>(ar, newData, 1);
        AddTail(newData[0]);
    }
}

// ---------------------------------------------------------------------------------------------
// CMap: a hash table of key/value pairs. Keys hash with HashKey and compare with CompareElements.
// The table starts with 17 buckets (InitHashTable chooses another size); once the entries
// outnumber the buckets, the table grows to the next prime of about twice its size, so chains
// stay short however many entries come in.

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
class CMap : public CObject {
public:
    typedef KEY BASE_KEY;
    typedef ARG_KEY BASE_ARG_KEY;
    typedef VALUE BASE_VALUE;
    typedef ARG_VALUE BASE_ARG_VALUE;

    // One entry, as PLookup and PGetFirstAssoc/PGetNextAssoc return it.
    class CPair {
    public:
        const KEY key;
        VALUE value;

    protected:
        explicit CPair(ARG_KEY keyval) : key(keyval), value() {}
    };

protected:
    class CAssoc : public CPair {
        friend class CMap;
        CAssoc* pNext;
        UINT nHashValue; // full hash of the key; the bucket is nHashValue % table size

    public:
        explicit CAssoc(ARG_KEY key) : CPair(key), pNext(nullptr), nHashValue(0) {}
    };

public:
    explicit CMap(INT_PTR nBlockSize = 10) : m_nBlockSize(nBlockSize < 1 ? 10 : nBlockSize) {}
    ~CMap() override { RemoveAll(); }

    INT_PTR GetCount() const { return m_nCount; }
    INT_PTR GetSize() const { return m_nCount; }
    BOOL IsEmpty() const { return m_nCount == 0; }

    BOOL Lookup(ARG_KEY key, VALUE& rValue) const;
    const CPair* PLookup(ARG_KEY key) const;
    CPair* PLookup(ARG_KEY key);
    // The value for key, inserted (value-initialised) when the key is new.
    VALUE& operator[](ARG_KEY key);
    void SetAt(ARG_KEY key, ARG_VALUE newValue) { (*this)[key] = newValue; }
    BOOL RemoveKey(ARG_KEY key);
    void RemoveAll();

    // Iteration: bucket by bucket. The entry just returned may be removed before the next call.
    POSITION GetStartPosition() const { return m_nCount == 0 ? nullptr : BEFORE_START_POSITION; }
    void GetNextAssoc(POSITION& rNextPosition, KEY& rKey, VALUE& rValue) const;
    const CPair* PGetFirstAssoc() const { return FirstAssoc(); }
    CPair* PGetFirstAssoc() { return FirstAssoc(); }
    const CPair* PGetNextAssoc(const CPair* pAssoc) const { return NextAssoc(pAssoc); }
    CPair* PGetNextAssoc(const CPair* pAssoc) { return NextAssoc(pAssoc); }

    UINT GetHashTableSize() const { return m_nHashTableSize; }
    // Sets the number of buckets (best a prime about 20% above the expected count); entries
    // already in the map are kept. bAllocNow=FALSE defers the table until the first insert.
    void InitHashTable(UINT hashSize, BOOL bAllocNow = TRUE);

    void Serialize(CArchive& ar) override;

protected:
    CAssoc** m_pHashTable = nullptr;
    UINT m_nHashTableSize = 17;
    INT_PTR m_nCount = 0;
    CAssoc* m_pFreeList = nullptr;
    CPlex* m_pBlocks = nullptr;
    INT_PTR m_nBlockSize;

    CAssoc* NewAssoc(ARG_KEY key);
    void FreeAssoc(CAssoc* pAssoc);
    CAssoc* GetAssocAt(ARG_KEY key, UINT& nHashBucket, UINT& nHashValue) const;

private:
    struct CFreeLink {
        CFreeLink* pNext;
    };
    void Rehash(UINT nNewSize);
    CAssoc* FirstAssoc() const;
    CAssoc* NextAssoc(const CPair* pPair) const;
};

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
void CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::Rehash(UINT nNewSize)
{
    CAssoc** pNew = AfxCollImpl::Allocate<CAssoc*>(nNewSize);
    memset(static_cast<void*>(pNew), 0, sizeof(CAssoc*) * nNewSize);
    if (m_pHashTable != nullptr) {
        // Walk the old buckets back to front and push each entry on its new bucket's head, so
        // entries of one bucket keep their relative order.
        for (UINT b = m_nHashTableSize; b-- > 0;) {
            CAssoc* pAssoc = m_pHashTable[b];
            CAssoc* pRev = nullptr;
            while (pAssoc != nullptr) {
                CAssoc* pNext = pAssoc->pNext;
                pAssoc->pNext = pRev;
                pRev = pAssoc;
                pAssoc = pNext;
            }
            while (pRev != nullptr) {
                CAssoc* pNext = pRev->pNext;
                CAssoc*& head = pNew[pRev->nHashValue % nNewSize];
                pRev->pNext = head;
                head = pRev;
                pRev = pNext;
            }
        }
        free(m_pHashTable);
    }
    m_pHashTable = pNew;
    m_nHashTableSize = nNewSize;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
void CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::InitHashTable(UINT hashSize, BOOL bAllocNow)
{
    if (hashSize == 0)
        AfxThrowInvalidArgException();
    if (m_pHashTable != nullptr || bAllocNow) {
        Rehash(hashSize);
    } else {
        m_nHashTableSize = hashSize;
    }
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
void CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::RemoveAll()
{
    if (m_pHashTable != nullptr) {
        if constexpr (!std::is_trivially_destructible<CAssoc>::value) {
            for (UINT b = 0; b < m_nHashTableSize; ++b)
                for (CAssoc* p = m_pHashTable[b]; p != nullptr;) {
                    CAssoc* pNext = p->pNext;
                    p->CAssoc::~CAssoc();
                    p = pNext;
                }
        }
        free(m_pHashTable);
        m_pHashTable = nullptr;
    }
    m_nCount = 0;
    m_pFreeList = nullptr;
    if (m_pBlocks != nullptr)
        m_pBlocks->FreeDataChain();
    m_pBlocks = nullptr;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
typename CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::CAssoc*
CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::NewAssoc(ARG_KEY key)
{
    if (m_pFreeList == nullptr) {
        CPlex* pBlock = CPlex::Create(m_pBlocks, m_nBlockSize, sizeof(CAssoc));
        CAssoc* pAssoc = static_cast<CAssoc*>(pBlock->data()) + m_nBlockSize - 1;
        for (INT_PTR i = m_nBlockSize - 1; i >= 0; --i, --pAssoc) {
            CFreeLink* pLink = ::new (static_cast<void*>(pAssoc))
                CFreeLink{reinterpret_cast<CFreeLink*>(m_pFreeList)};
            m_pFreeList = reinterpret_cast<CAssoc*>(pLink);
        }
    }
    CAssoc* pAssoc = m_pFreeList;
    CAssoc* pNextFree = reinterpret_cast<CAssoc*>(reinterpret_cast<CFreeLink*>(pAssoc)->pNext);
    ::new (static_cast<void*>(pAssoc)) CAssoc(key);
    m_pFreeList = pNextFree;
    ++m_nCount;
    return pAssoc;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
void CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::FreeAssoc(CAssoc* pAssoc)
{
    pAssoc->CAssoc::~CAssoc();
    CFreeLink* pLink = ::new (static_cast<void*>(pAssoc))
        CFreeLink{reinterpret_cast<CFreeLink*>(m_pFreeList)};
    m_pFreeList = reinterpret_cast<CAssoc*>(pLink);
    // The last entry gone: give the blocks and the table back.
    if (--m_nCount == 0)
        RemoveAll();
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
typename CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::CAssoc*
CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::GetAssocAt(ARG_KEY key, UINT& nHashBucket,
                                                  UINT& nHashValue) const
{
    nHashValue = HashKey<ARG_KEY>(key);
    nHashBucket = nHashValue % m_nHashTableSize;
    if (m_pHashTable == nullptr)
        return nullptr;
    for (CAssoc* pAssoc = m_pHashTable[nHashBucket]; pAssoc != nullptr; pAssoc = pAssoc->pNext)
        if (pAssoc->nHashValue == nHashValue &&
            CompareElements<KEY, typename std::remove_reference<ARG_KEY>::type>(&pAssoc->key, &key))
            return pAssoc;
    return nullptr;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
BOOL CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::Lookup(ARG_KEY key, VALUE& rValue) const
{
    UINT nBucket, nHash;
    CAssoc* pAssoc = GetAssocAt(key, nBucket, nHash);
    if (pAssoc == nullptr)
        return FALSE;
    rValue = pAssoc->value;
    return TRUE;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
const typename CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::CPair*
CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::PLookup(ARG_KEY key) const
{
    UINT nBucket, nHash;
    return GetAssocAt(key, nBucket, nHash);
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
typename CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::CPair*
CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::PLookup(ARG_KEY key)
{
    UINT nBucket, nHash;
    return GetAssocAt(key, nBucket, nHash);
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
VALUE& CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::operator[](ARG_KEY key)
{
    UINT nBucket, nHash;
    CAssoc* pAssoc = GetAssocAt(key, nBucket, nHash);
    if (pAssoc != nullptr)
        return pAssoc->value;
    if (m_pHashTable == nullptr) {
        Rehash(m_nHashTableSize);
    } else if (static_cast<UINT_PTR>(m_nCount) >= m_nHashTableSize) {
        UINT nNewSize = AfxCollImpl::NextHashTableSize(2 * static_cast<UINT_PTR>(m_nHashTableSize));
        if (nNewSize > m_nHashTableSize)
            Rehash(nNewSize);
    }
    nBucket = nHash % m_nHashTableSize;
    pAssoc = NewAssoc(key);
    pAssoc->nHashValue = nHash;
    pAssoc->pNext = m_pHashTable[nBucket];
    m_pHashTable[nBucket] = pAssoc;
    return pAssoc->value;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
BOOL CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::RemoveKey(ARG_KEY key)
{
    if (m_pHashTable == nullptr)
        return FALSE;
    UINT nHash = HashKey<ARG_KEY>(key);
    CAssoc** ppPrev = &m_pHashTable[nHash % m_nHashTableSize];
    for (CAssoc* pAssoc = *ppPrev; pAssoc != nullptr; ppPrev = &pAssoc->pNext, pAssoc = *ppPrev) {
        if (pAssoc->nHashValue == nHash &&
            CompareElements<KEY, typename std::remove_reference<ARG_KEY>::type>(&pAssoc->key, &key)) {
            *ppPrev = pAssoc->pNext;
            FreeAssoc(pAssoc);
            return TRUE;
        }
    }
    return FALSE;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
typename CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::CAssoc*
CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::FirstAssoc() const
{
    if (m_pHashTable == nullptr || m_nCount == 0)
        return nullptr;
    for (UINT b = 0; b < m_nHashTableSize; ++b)
        if (m_pHashTable[b] != nullptr)
            return m_pHashTable[b];
    return nullptr;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
typename CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::CAssoc*
CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::NextAssoc(const CPair* pPair) const
{
    if (pPair == nullptr)
        AfxThrowInvalidArgException();
    const CAssoc* pAssoc = static_cast<const CAssoc*>(pPair);
    if (pAssoc->pNext != nullptr)
        return pAssoc->pNext;
    for (UINT b = pAssoc->nHashValue % m_nHashTableSize + 1; b < m_nHashTableSize; ++b)
        if (m_pHashTable[b] != nullptr)
            return m_pHashTable[b];
    return nullptr;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
void CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::GetNextAssoc(POSITION& rNextPosition, KEY& rKey,
                                                         VALUE& rValue) const
{
    CAssoc* pAssoc = reinterpret_cast<CAssoc*>(rNextPosition);
    if (pAssoc == reinterpret_cast<CAssoc*>(BEFORE_START_POSITION))
        pAssoc = FirstAssoc();
    if (pAssoc == nullptr)
        AfxThrowInvalidArgException();
    rNextPosition = reinterpret_cast<POSITION>(NextAssoc(pAssoc));
    rKey = pAssoc->key;
    rValue = pAssoc->value;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
void CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::Serialize(CArchive& ar)
{
    CObject::Serialize(ar);
    if (ar.IsStoring()) {
        ar.WriteCount(m_nCount);
        for (CAssoc* p = FirstAssoc(); p != nullptr; p = NextAssoc(p)) {
            SerializeElements<KEY>(ar, const_cast<KEY*>(&p->key), 1);
            SerializeElements<VALUE>(ar, &p->value, 1);
        }
        return;
    }
    DWORD_PTR nNewCount = ar.ReadCount();
    while (nNewCount-- > 0) {
        KEY newKey[1];
        VALUE newValue[1];
        SerializeElements<KEY>(ar, newKey, 1);
        SerializeElements<VALUE>(ar, newValue, 1);
        SetAt(newKey[0], newValue[0]);
    }
}

// ---------------------------------------------------------------------------------------------
// Typed pointer wrappers over the pointer collections of afxcoll.h (or over a CArray/CList/CMap
// of pointers): the same storage, with the element type checked by the compiler.

template <class BASE_CLASS, class TYPE>
class CTypedPtrArray : public BASE_CLASS {
public:
    TYPE GetAt(INT_PTR nIndex) const { return static_cast<TYPE>(BASE_CLASS::GetAt(nIndex)); }
    TYPE& ElementAt(INT_PTR nIndex) { return reinterpret_cast<TYPE&>(BASE_CLASS::ElementAt(nIndex)); }
    void SetAt(INT_PTR nIndex, TYPE ptr) { BASE_CLASS::SetAt(nIndex, ptr); }
    void SetAtGrow(INT_PTR nIndex, TYPE newElement) { BASE_CLASS::SetAtGrow(nIndex, newElement); }
    INT_PTR Add(TYPE newElement) { return BASE_CLASS::Add(newElement); }
    INT_PTR Append(const CTypedPtrArray& src) { return BASE_CLASS::Append(src); }
    void Copy(const CTypedPtrArray& src) { BASE_CLASS::Copy(src); }
    void InsertAt(INT_PTR nIndex, TYPE newElement, INT_PTR nCount = 1)
    {
        BASE_CLASS::InsertAt(nIndex, newElement, nCount);
    }
    void InsertAt(INT_PTR nStartIndex, CTypedPtrArray* pNewArray)
    {
        BASE_CLASS::InsertAt(nStartIndex, pNewArray);
    }
    TYPE operator[](INT_PTR nIndex) const { return GetAt(nIndex); }
    TYPE& operator[](INT_PTR nIndex) { return ElementAt(nIndex); }
};

template <class BASE_CLASS, class TYPE>
class CTypedPtrList : public BASE_CLASS {
public:
    explicit CTypedPtrList(INT_PTR nBlockSize = 10) : BASE_CLASS(nBlockSize) {}

    TYPE& GetHead() { return reinterpret_cast<TYPE&>(BASE_CLASS::GetHead()); }
    TYPE GetHead() const { return static_cast<TYPE>(BASE_CLASS::GetHead()); }
    TYPE& GetTail() { return reinterpret_cast<TYPE&>(BASE_CLASS::GetTail()); }
    TYPE GetTail() const { return static_cast<TYPE>(BASE_CLASS::GetTail()); }
    TYPE RemoveHead() { return static_cast<TYPE>(BASE_CLASS::RemoveHead()); }
    TYPE RemoveTail() { return static_cast<TYPE>(BASE_CLASS::RemoveTail()); }
    TYPE& GetNext(POSITION& rPosition) { return reinterpret_cast<TYPE&>(BASE_CLASS::GetNext(rPosition)); }
    TYPE GetNext(POSITION& rPosition) const { return static_cast<TYPE>(BASE_CLASS::GetNext(rPosition)); }
    TYPE& GetPrev(POSITION& rPosition) { return reinterpret_cast<TYPE&>(BASE_CLASS::GetPrev(rPosition)); }
    TYPE GetPrev(POSITION& rPosition) const { return static_cast<TYPE>(BASE_CLASS::GetPrev(rPosition)); }
    TYPE& GetAt(POSITION position) { return reinterpret_cast<TYPE&>(BASE_CLASS::GetAt(position)); }
    TYPE GetAt(POSITION position) const { return static_cast<TYPE>(BASE_CLASS::GetAt(position)); }
    void SetAt(POSITION pos, TYPE newElement) { BASE_CLASS::SetAt(pos, newElement); }
    POSITION AddHead(TYPE newElement) { return BASE_CLASS::AddHead(newElement); }
    POSITION AddTail(TYPE newElement) { return BASE_CLASS::AddTail(newElement); }
    void AddHead(CTypedPtrList* pNewList) { BASE_CLASS::AddHead(pNewList); }
    void AddTail(CTypedPtrList* pNewList) { BASE_CLASS::AddTail(pNewList); }
    POSITION InsertBefore(POSITION position, TYPE newElement)
    {
        return BASE_CLASS::InsertBefore(position, newElement);
    }
    POSITION InsertAfter(POSITION position, TYPE newElement)
    {
        return BASE_CLASS::InsertAfter(position, newElement);
    }
};

template <class BASE_CLASS, class KEY, class VALUE>
class CTypedPtrMap : public BASE_CLASS {
public:
    explicit CTypedPtrMap(INT_PTR nBlockSize = 10) : BASE_CLASS(nBlockSize) {}

    BOOL Lookup(typename BASE_CLASS::BASE_ARG_KEY key, VALUE& rValue) const
    {
        typename BASE_CLASS::BASE_VALUE value{};
        if (!BASE_CLASS::Lookup(key, value))
            return FALSE;
        rValue = static_cast<VALUE>(value);
        return TRUE;
    }
    VALUE& operator[](typename BASE_CLASS::BASE_ARG_KEY key)
    {
        return reinterpret_cast<VALUE&>(BASE_CLASS::operator[](key));
    }
    void SetAt(KEY key, VALUE newValue) { BASE_CLASS::SetAt(key, newValue); }
    BOOL RemoveKey(KEY key) { return BASE_CLASS::RemoveKey(key); }
    void GetNextAssoc(POSITION& rPosition, KEY& rKey, VALUE& rValue) const
    {
        typename BASE_CLASS::BASE_KEY key{};
        typename BASE_CLASS::BASE_VALUE value{};
        BASE_CLASS::GetNextAssoc(rPosition, key, value);
        rKey = static_cast<KEY>(key);
        rValue = static_cast<VALUE>(value);
    }
};
