// Copy, move, delete and rename of files through the shell's file operation.
#pragma once
#include "KxUiDef.h"
#include <shellapi.h>

// Builds the shell's two file lists (list 0: sources, list 1: destinations; each a run of
// NUL-terminated names closed by an extra NUL) and runs a file operation over them.
// A failed allocation raises the framework's memory exception (CMemoryException) and leaves
// the lists and the title as they were.
class KXUI_API KxUiShellFileOp {
public:
    KxUiShellFileOp();
    // Sets everything up and runs the operation with that code (FO_MOVE 1, FO_COPY 2,
    // FO_DELETE 3, FO_RENAME 4); any other code runs nothing.
    KxUiShellFileOp(HWND owner, UINT operation, CString from, CString to, WORD flags,
                    CString title);
    KxUiShellFileOp(const KxUiShellFileOp& other);
    KxUiShellFileOp& operator=(const KxUiShellFileOp& other);
    virtual ~KxUiShellFileOp();

    // Each clears the aborted flag and returns the shell's result (0 on success).
    LONG CopyFiles();
    LONG MoveFiles();
    LONG DeleteFiles();
    LONG RenameFiles();

    // Appends a name to list 0 or 1; false for another list.
    bool AddFile(int list, CString name);
    // Frees one list.
    void ClearFiles(int list);
    // Makes room for count characters (plus the final NUL) in one list.
    void SetMaxCount(int list, LONG count);

    void SetOwner(HWND owner) { m_fos.hwnd = owner; }
    // Progress title shown with FOF_SIMPLEPROGRESS; an empty text means none.
    void SetTitle(CString title);
    void SetTitle(int resourceId);
    void SetFlags(WORD flags) { m_fos.fFlags = flags; }
    WORD GetFlags() const { return m_fos.fFlags; }
    BOOL AnyOperationsAborted() const { return m_fos.fAnyOperationsAborted; }

    LPCWSTR getFrom() const { return m_pBuffer[0]; }
    LPCWSTR getTo() const { return m_pBuffer[1]; }

protected:
    // Grows (or first allocates) one list to the given number of characters; false for
    // another list or no characters.
    bool GrabMem(int list, int characters);
    LONG run(UINT operation);

private:
    void copyFrom(const KxUiShellFileOp& other);
    void setListPointer(int list);

    int m_nMax[2];              // capacity of each list, in characters
    int m_nLen[2];              // characters used, not counting the final NUL
    SHFILEOPSTRUCTW m_fos;
    LPWSTR m_pBuffer[2];        // start of each list
    LPWSTR m_pPos[2];           // where the next name goes
    LPWSTR m_pTitle;            // own copy of the progress title
};
