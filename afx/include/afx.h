// Core of the framework: exceptions (grows into objects, strings, collections and files).
#pragma once
#include "afxver_.h"

class KXAFX_API CException {
public:
    explicit CException(BOOL bAutoDelete = TRUE) : m_bAutoDelete(bAutoDelete) {}
    virtual ~CException();
    // Frees a heap-allocated exception; does nothing for one that is not auto-delete.
    void Delete();
    BOOL m_bAutoDelete;
};

class KXAFX_API CInvalidArgException : public CException {
public:
    CInvalidArgException() = default;
};

[[noreturn]] KXAFX_API void AFXAPI AfxThrowInvalidArgException();

#include "afxfile_.h"
