// KxArrayPtrDelete: a pointer array that owns its elements.
#pragma once
#include <afxtempl.h>

// BASE is an array of pointers (CArray<T*, T*>, CTypedPtrArray<...>). Elements are deleted when the
// array is emptied with RemoveAll or destroyed; RemoveAt deletes the element it removes.
template <class BASE>
class KxArrayPtrDelete : public BASE {
public:
    KxArrayPtrDelete() = default;
    KxArrayPtrDelete(const KxArrayPtrDelete&) = delete;
    KxArrayPtrDelete& operator=(const KxArrayPtrDelete&) = delete;
    ~KxArrayPtrDelete() { RemoveAll(); }

    void RemoveAll()
    {
        for (INT_PTR i = 0; i < this->GetSize(); ++i)
            delete this->GetAt(i);
        BASE::RemoveAll();
    }
    void RemoveAt(INT_PTR nIndex)
    {
        delete this->GetAt(nIndex);
        BASE::RemoveAt(nIndex);
    }
};
