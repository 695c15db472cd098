// KxUiHandleMgr: owns the icons, cursors, GDI objects and modules a control creates and
// frees them all at once; counts the process's GDI objects.
#pragma once
#include "KxUiDef.h"
#include "KxArraySimple.h"

class KXUI_API KxUiHandleMgr {
public:
    enum GUIObjectType {
        GUI_GDI_QUOTA = 0,     // the per-process GDI object quota of the system
        GUI_GDI_OBJECTS = 1,   // the GDI objects the current process holds
    };

    KxUiHandleMgr();
    virtual ~KxUiHandleMgr();  // frees everything still held

    // Take ownership of a handle and return it; null for a null handle and for an icon,
    // cursor or GDI object already held (which must then not be freed a second time by the
    // caller either). A module may be added several times; each entry is freed once.
    HICON add_HICON(HICON hIcon);
    HCURSOR add_HCURSOR(HCURSOR hCursor);
    HGDIOBJ add_HGDIOBJ(HGDIOBJ hObject);
    HMODULE add_HMODULE(HMODULE hModule);

    // Frees icons, then cursors, then GDI objects, then modules.
    void free_All();

    // Free one handle; false for a null handle, else the platform's answer.
    static bool _free_HICON(HICON hIcon);
    static bool _free_HCURSOR(HCURSOR hCursor);
    static bool _free_HGDIOBJ(HGDIOBJ hObject);
    static bool _free_HMODULE(HMODULE hModule);

    // The GDI quota of a process, read from the registry, or the current process's GDI
    // object count; 0 when unknown or for any other type.
    static unsigned long _countGDIObject(GUIObjectType type);

protected:
    // Each frees one kind from the highest handle down, then empties its array.
    void free_HICONs();
    void free_HCURSORs();
    void free_HGDIOBJs();
    void free_HMODULEs();

    KxArraySimple<HICON> m_arrayHICON;
    KxArraySimple<HCURSOR> m_arrayHCURSOR;
    KxArraySimple<HGDIOBJ> m_arrayHGDIOBJ;
    KxArraySimple<HMODULE> m_arrayHMODULE;

private:
    KxUiHandleMgr(const KxUiHandleMgr&);
    KxUiHandleMgr& operator=(const KxUiHandleMgr&);
};
