// What happens when a hyperlink is activated, and carrying it out.
//
// KxUiHyperLinkAction is a plain copyable value: an action code (nothing, a user message, or a
// shell action on a file, folder or address) with what the action needs. ExecuteIt runs it;
// a failure is kept in the error field and, on request, reported to the user with a beep and
// a message box (ErrorNotify) whose text depends on the shell's error code.
//
//     KxUiHyperLinkAction link;                       // "Open", show normal
//     link.SetFile(L"https://example.org/");
//     link.ExecuteIt(TRUE);                           // opens it, or tells the user why not
//
//     link.Set(KxUiHyperLinkAction::ActionUserDefined, NULL, NULL, NULL, SW_SHOWNORMAL,
//              WM_APP + 7, hwndOwner);                // sends WM_APP + 7, lParam = &link
//
// Overridable: ErrorNotify (how a failure is shown).
//
// Shell actions go through one process-wide function (KxUiSetShellExecute), ShellExecuteW
// unless replaced, so a test or a host can see what would be launched without a program
// starting.
#pragma once
#include "KxUiDef.h"

class CWnd;

// The call that carries out shell actions; same arguments and result as ShellExecuteW.
typedef HINSTANCE(WINAPI* KxUiShellExecuteFunc)(HWND hwnd, LPCWSTR verb, LPCWSTR file, LPCWSTR parameters,
                                                 LPCWSTR directory, INT showCmd);
// Replaces the shell call (NULL puts ShellExecuteW back); returns the one replaced.
KXUI_API KxUiShellExecuteFunc KxUiSetShellExecute(KxUiShellExecuteFunc func);

class KXUI_API KxUiHyperLinkAction {
public:
    // Action codes; their display names are GetActionName(code).
    enum {
        ActionNone = 0,         // "None": nothing, always succeeds
        ActionUserDefined = 1,  // "User defined": the user message to the recipient
        ActionOpen = 2,         // "Open": shell verb "open" on the file
        ActionPrint = 3,        // "Print": shell verb "print"
        ActionExplore = 4,      // "Explore": shell verb "explore"
        ActionEmail = 5,        // "E-mail": "open" on "mailto:" + file
        ActionCount = 6
    };
    // Values of the error field besides the shell's own results (0 to 32).
    enum {
        ErrorNone = -1,            // the last action succeeded
        ErrorUnknownAction = -2,   // the action code is none of the above
        ErrorUserMessage = -3      // the user message was answered with 0
    };

    KxUiHyperLinkAction();
    KxUiHyperLinkAction(const KxUiHyperLinkAction& other) = default;
    KxUiHyperLinkAction& operator=(const KxUiHyperLinkAction& other) = default;

    // ---- overridables ----
    virtual ~KxUiHyperLinkAction();
    // Beeps and shows a stop box telling what the last failure was; nothing after a success.
    virtual void ErrorNotify();

    // ---- setting up ----
    // Sets the fields in this order; NULL texts become empty.
    void Set(int nAction, LPCTSTR lpszFile, LPCTSTR lpszParameters, LPCTSTR lpszDefaultDirectory, int nShowCmd,
             UINT nUserMessage, HWND hWndRecipient);
    // Copies another action (every field).
    void Set(const KxUiHyperLinkAction& other) { *this = other; }
    // Owner 0, "Open", empty texts, SW_SHOWNORMAL, no user message or recipient, no error.
    void Reset();

    void SetAction(int nAction) { m_nActionID = nAction; }
    int GetAction() const { return m_nActionID; }
    void SetFile(LPCTSTR lpszFile) { m_sFile = lpszFile; }
    CString GetFile() const { return m_sFile; }
    void SetParameters(LPCTSTR lpszParameters) { m_sParameters = lpszParameters; }
    CString GetParameters() const { return m_sParameters; }
    void SetDefaultDirectory(LPCTSTR lpszDirectory) { m_sDefaultDirectory = lpszDirectory; }
    CString GetDefaultDirectory() const { return m_sDefaultDirectory; }
    void SetShowCmd(int nShowCmd) { m_nShowCmd = nShowCmd; }
    int GetShowCmd() const { return m_nShowCmd; }
    void SetUserMessage(UINT nMessage) { m_nCallbackMsg = nMessage; }
    UINT GetUserMessage() const { return m_nCallbackMsg; }
    void SetOwnerWnd(HWND hWnd) { m_hWndOwner = hWnd; }
    void SetOwnerWnd(CWnd* pWnd);
    HWND GetOwnerWnd() const { return m_hWndOwner; }
    // The window that receives the user message (HWND_BROADCAST: posted to every top window).
    void SetRecipientWnd(CWnd* pWnd);
    void SetRecipientWnd(HWND hWnd) { m_hWndRecipient = hWnd; }
    HWND GetRecipientWnd() const { return m_hWndRecipient; }

    // ---- carrying it out ----
    // Runs the action; TRUE on success. On failure the error is kept and, with bNotifyError,
    // ErrorNotify is called. The fields are the same afterwards as before.
    BOOL ExecuteIt(BOOL bNotifyError = TRUE);
    // What the last shell action returned (0 after a failure or for other actions).
    HINSTANCE GetResult() const { return m_hResult; }
    // ErrorNone, ErrorUnknownAction, ErrorUserMessage or the shell's error result (0-32).
    int GetError() const { return m_nError; }
    // The text ErrorNotify shows for an error value (empty for ErrorNone).
    CString GetErrorText(int nError) const;

    // "None", "User defined", "Open", "Print", "Explore", "E-mail"; NULL for another code.
    static LPCTSTR GetActionName(int nAction);

protected:
    HWND m_hWndOwner;             // owner of the error box
    int m_nActionID;              // one of the action codes
    CString m_sFile;              // file, folder, address or e-mail address
    CString m_sParameters;        // passed to the shell action
    CString m_sDefaultDirectory;  // working directory of the shell action
    int m_nShowCmd;               // SW_ value for the shell action
    UINT m_nCallbackMsg;          // message of the user-defined action
    HWND m_hWndRecipient;         // receiver of that message
    HINSTANCE m_hResult;          // last shell result, 0 after a failure
    int m_nError;                 // outcome of the last ExecuteIt
};
