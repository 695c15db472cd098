// KxArraySimple: an array kept in ascending order of its values, searched by bisection.
#pragma once
#include <afxtempl.h>
#include <type_traits>

// Values are ordered as unsigned 64-bit numbers (handles and pointers by their address).
// Equal values are refused unless the array was made to allow duplicates.
template <class TYPE>
class KxArraySimple : public CArray<TYPE, TYPE> {
public:
    explicit KxArraySimple(bool bAllowDuplicates = false) : m_bAllowDuplicates(bAllowDuplicates) {}

    static ULONGLONG orderKey(TYPE value)
    {
        if constexpr (std::is_pointer_v<TYPE>)
            return static_cast<ULONGLONG>(reinterpret_cast<UINT_PTR>(value));
        else
            return static_cast<ULONGLONG>(value);
    }

    // Index of the first element equal to `value`, else of the first larger one; -1 when
    // every element is smaller. `bFound` tells which of the two it is.
    INT_PTR search(TYPE value, bool& bFound) const
    {
        const ULONGLONG key = orderKey(value);
        INT_PTR low = 0;
        INT_PTR high = this->GetSize() - 1;
        while (low <= high) {
            const INT_PTR middle = (low + high) / 2;
            if (orderKey(this->GetData()[middle]) < key)
                low = middle + 1;
            else
                high = middle - 1;
        }
        bFound = low < this->GetSize() && orderKey(this->GetData()[low]) == key;
        return low < this->GetSize() ? low : -1;
    }

    // Index of an element equal to `value`, or -1.
    INT_PTR find(TYPE value) const
    {
        bool bFound = false;
        const INT_PTR index = search(value, bFound);
        return bFound ? index : -1;
    }

    // Inserts `value` at its place; returns its index, or -1 when it is refused as a duplicate.
    INT_PTR insertSorted(TYPE value)
    {
        bool bFound = false;
        INT_PTR index = search(value, bFound);
        if (bFound && !m_bAllowDuplicates)
            return -1;
        if (index < 0)
            return this->Add(value);
        this->InsertAt(index, value);
        return index;
    }

    bool allowsDuplicates() const { return m_bAllowDuplicates; }

protected:
    bool m_bAllowDuplicates;
};
