#include "afx.h"

CException::~CException() = default;

void CException::Delete()
{
    if (m_bAutoDelete)
        delete this;
}

void AFXAPI AfxThrowInvalidArgException()
{
    throw new CInvalidArgException;
}
