// Controls over the platform window classes: CStatic, CButton, CEdit, CListBox, CComboBox, CScrollBar (included by afxwin.h).
#pragma once
