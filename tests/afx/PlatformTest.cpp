// The platform under the framework works headless: windows, sizing, registry.
#include <string>

namespace {

LRESULT CALLBACK RecordSizeProc(HWND h, UINT msg, WPARAM wp, LPARAM lp)
{
    if (msg == WM_SIZE)
        SetWindowLongPtrW(h, GWLP_USERDATA, lp);
    return DefWindowProcW(h, msg, wp, lp);
}

}  // namespace

TEST(Platform, WindowIsCreatedAndSizedWithoutADisplay)
{
    WNDCLASSW wc = {};
    wc.lpfnWndProc = RecordSizeProc;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.lpszClassName = L"KxTestSizeWnd";
    RegisterClassW(&wc);
    HWND h = CreateWindowExW(0, wc.lpszClassName, L"t", WS_OVERLAPPEDWINDOW, 10, 10, 300, 200,
                             nullptr, nullptr, wc.hInstance, nullptr);
    ASSERT_NE(nullptr, h);
    SetWindowPos(h, nullptr, 0, 0, 400, 250, SWP_NOZORDER | SWP_NOMOVE);
    RECT rc;
    GetClientRect(h, &rc);
    LPARAM last = GetWindowLongPtrW(h, GWLP_USERDATA);
    EXPECT_EQ(rc.right, LOWORD(last));
    EXPECT_EQ(rc.bottom, HIWORD(last));
    EXPECT_GT(rc.right, 300);
    DestroyWindow(h);
    UnregisterClassW(wc.lpszClassName, wc.hInstance);
}

TEST(Platform, RegistryValueRoundTripsAndKeyIsRemoved)
{
    const wchar_t* path = L"Software\\KxUiTests\\Platform";
    HKEY key;
    ASSERT_EQ(ERROR_SUCCESS, RegCreateKeyExW(HKEY_CURRENT_USER, path, 0, nullptr, 0, KEY_ALL_ACCESS,
                                             nullptr, &key, nullptr));
    const BYTE data[] = {1, 2, 3, 0, 255};
    ASSERT_EQ(ERROR_SUCCESS, RegSetValueExW(key, L"Blob", 0, REG_BINARY, data, sizeof data));
    BYTE back[16];
    DWORD type = 0, size = sizeof back;
    ASSERT_EQ(ERROR_SUCCESS, RegQueryValueExW(key, L"Blob", nullptr, &type, back, &size));
    RegCloseKey(key);
    EXPECT_EQ(static_cast<DWORD>(REG_BINARY), type);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(data), sizeof data),
              std::string(reinterpret_cast<const char*>(back), size));

    ASSERT_EQ(ERROR_SUCCESS, RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\KxUiTests"));
    EXPECT_NE(ERROR_SUCCESS, RegOpenKeyExW(HKEY_CURRENT_USER, path, 0, KEY_READ, &key));
}
