// Files and archives: CFile, CMemFile, CStdioFile, CArchive (included by afx.h).
#pragma once
