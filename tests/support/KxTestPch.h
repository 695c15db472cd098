// Precompiled header of the test suites.
#pragma once
#include <windows.h>
#include <commctrl.h>
#include <gtest/gtest.h>
#include <afx.h>
