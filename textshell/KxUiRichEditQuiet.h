// Keeps a rich edit control quiet while code selects and formats many spans of its text in a
// row, and gives the control back exactly as it was when the scope ends, by any way out.
//
// Each selection and format call on a rich edit control otherwise records an undo action,
// sends the parent a selection-change (and possibly change) notification and, on a visible
// control, repaints the old and new selection. Over thousands of spans that costs far more
// than the work asked for, and the undo actions would let Ctrl+Z take the colours off.
//
//   {
//       KxUiRichEditQuiet quiet(edit, KxUiRichEditQuiet::all);
//       ... edit.SetSel / edit.SetSelectionCharFormat, many times ...
//   }   // undo recording, notifications, drawing and the scroll position are back
#pragma once
#include <afxcmn.h>
#include <richole.h>
#include <tom.h>
#include <wrl/client.h>

// The text object model's document interface; MinGW's headers declare it without its GUID.
#ifndef KXUI_ITEXTDOCUMENT_UUID
#define KXUI_ITEXTDOCUMENT_UUID
__CRT_UUID_DECL(ITextDocument, 0x8CC497C0, 0xA1DF, 0x11CE, 0x80, 0x98, 0x00, 0xAA, 0x00, 0x47,
                0xBE, 0x5D)
#endif

class KxUiRichEditQuiet {
public:
    enum : unsigned {
        undo = 1,       // suspend undo recording (the text object model's tomSuspend)
        events = 2,     // clear the event mask: no notifications to the parent
        redraw = 4,     // stop drawing (a visible control only) and keep the scroll position
        selection = 8,  // hide the selection
        all = undo | events | redraw | selection,
    };

    KxUiRichEditQuiet(CRichEditCtrl& edit, unsigned what) : m_edit(edit)
    {
        if (what & undo)
            suspendUndo();
        if (what & events) {
            m_eventMask = m_edit.SetEventMask(0);
            m_events = true;
        }
        // A control that is not visible (or whose drawing its owner has already stopped,
        // which clears its visible style) draws nothing and is left alone.
        if ((what & redraw) && m_edit.IsWindowVisible()) {
            m_edit.SendMessage(EM_GETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&m_scroll));
            m_edit.SetRedraw(FALSE);
            m_redraw = true;
        }
        if ((what & selection) && !(m_edit.GetStyle() & ES_NOHIDESEL) &&
            ::GetFocus() == m_edit.m_hWnd) {
            // Only a focused control without ES_NOHIDESEL shows its selection and can be
            // told to show it again afterwards without changing how it behaves.
            m_edit.HideSelection(TRUE, FALSE);
            m_selection = true;
        }
    }

    ~KxUiRichEditQuiet()
    {
        // Reverse order of suspension.
        if (m_selection)
            m_edit.HideSelection(FALSE, FALSE);
        if (m_redraw) {
            // Scrolled back before drawing resumes: Wine's control scrolls a shown window
            // with a notification (EN_UPDATE) whatever its event mask says.
            m_edit.SendMessage(EM_SETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&m_scroll));
            m_edit.SetRedraw(TRUE);
            m_edit.Invalidate();
        }
        if (m_events)
            m_edit.SetEventMask(m_eventMask);
        if (m_document)
            m_document->Undo(tomResume, nullptr);
    }

    KxUiRichEditQuiet(const KxUiRichEditQuiet&) = delete;
    KxUiRichEditQuiet& operator=(const KxUiRichEditQuiet&) = delete;

    // Undo recording is suspended (the control offers the text object model).
    bool undoSuspended() const { return m_document != nullptr; }

private:
    void suspendUndo()
    {
        // EM_SETUNDOLIMIT 0 would also stop recording, but the old limit cannot be read
        // back and Windows empties the undo stack with it; suspension keeps both.
        Microsoft::WRL::ComPtr<IRichEditOle> ole;
        if (!m_edit.SendMessage(EM_GETOLEINTERFACE, 0,
                                reinterpret_cast<LPARAM>(ole.GetAddressOf())) || !ole)
            return;
        Microsoft::WRL::ComPtr<ITextDocument> document;
        if (FAILED(ole.As(&document)) || !document)
            return;
        if (SUCCEEDED(document->Undo(tomSuspend, nullptr)))
            m_document = document;
    }

    CRichEditCtrl& m_edit;
    Microsoft::WRL::ComPtr<ITextDocument> m_document;  // set while undo is suspended
    DWORD m_eventMask = 0;
    POINT m_scroll = {0, 0};
    bool m_events = false;
    bool m_redraw = false;
    bool m_selection = false;
};
