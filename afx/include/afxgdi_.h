// Drawing objects: CDC and its kin, CGdiObject, CPen, CBrush, CFont, CBitmap, CRgn (included by afxwin.h).
#pragma once
