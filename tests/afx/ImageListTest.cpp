// CImageList: images are added, replaced, removed and drawn where they belong; the
// wrapper destroys only the lists it owns.
#include <afxcmn.h>
#include "KxPixelProbe.h"

namespace {

const COLORREF kRed = RGB(255, 0, 0);
const COLORREF kBlue = RGB(0, 0, 255);
const COLORREF kMagenta = RGB(255, 0, 255);  // the mask colour of the strips below
const COLORREF kWhite = RGB(255, 255, 255);

// A strip of 16x16 images, each a solid square of its colour with a 4-pixel border of
// the mask colour.
void MakeStrip(CBitmap& bmp, std::initializer_list<COLORREF> colours)
{
    CDC screen;
    screen.Attach(GetDC(nullptr));
    CDC mem;
    mem.CreateCompatibleDC(&screen);
    bmp.CreateCompatibleBitmap(&screen, 16 * static_cast<int>(colours.size()), 16);
    CBitmap* old = mem.SelectObject(&bmp);
    int x = 0;
    for (COLORREF c : colours) {
        mem.FillSolidRect(x, 0, 16, 16, kMagenta);
        mem.FillSolidRect(x + 4, 4, 8, 8, c);
        x += 16;
    }
    mem.SelectObject(old);
    ReleaseDC(nullptr, screen.Detach());
}

}  // namespace

TEST(ImageList, ImagesAreAddedReplacedRemovedAndDescribed)
{
    CImageList list;
    ASSERT_TRUE(list.Create(16, 16, ILC_COLOR32 | ILC_MASK, 2, 4));
    EXPECT_FALSE(list.Create(8, 8, ILC_COLOR32, 1, 1));  // already created
    EXPECT_EQ(0, list.GetImageCount());
    int cx = 0, cy = 0;
    ASSERT_TRUE(list.GetIconSize(&cx, &cy));
    EXPECT_EQ(16, cx);
    EXPECT_EQ(16, cy);

    CBitmap strip;
    MakeStrip(strip, {kRed, kBlue});
    EXPECT_EQ(0, list.Add(&strip, kMagenta));
    EXPECT_EQ(2, list.GetImageCount());
    IMAGEINFO info = {};
    ASSERT_TRUE(list.GetImageInfo(1, &info));
    EXPECT_EQ((RECT{16, 0, 32, 16}), info.rcImage);
    EXPECT_NE(nullptr, info.hbmMask);
    EXPECT_FALSE(list.GetImageInfo(2, &info));

    HICON icon = list.ExtractIcon(0);
    ASSERT_NE(nullptr, icon);
    EXPECT_EQ(2, list.Add(icon));
    EXPECT_EQ(0, list.Replace(0, icon));  // the index it replaced
    DestroyIcon(icon);
    EXPECT_EQ(3, list.GetImageCount());
    ASSERT_TRUE(list.Remove(1));
    EXPECT_EQ(2, list.GetImageCount());
    EXPECT_FALSE(list.Remove(5));
    ASSERT_TRUE(list.Remove(-1));
    EXPECT_EQ(0, list.GetImageCount());

    CImageList empty;
    EXPECT_EQ(0, empty.GetImageCount());
    EXPECT_EQ(-1, empty.Add(&strip, kMagenta));
    EXPECT_EQ(-1, list.Add(static_cast<CBitmap*>(nullptr), kMagenta));
}

TEST(ImageList, DrawPutsTheImageAtItsPlaceAndKeepsMaskedPixels)
{
    CImageList list;
    ASSERT_TRUE(list.Create(16, 16, ILC_COLOR24 | ILC_MASK, 2, 2));
    CBitmap strip;
    MakeStrip(strip, {kRed, kBlue});
    ASSERT_EQ(0, list.Add(&strip, kMagenta));

    KxPixelProbe probe;
    ASSERT_TRUE(probe.Create(64, 40, kWhite));
    CDC dc;
    dc.Attach(probe.Dc());
    ASSERT_TRUE(list.Draw(&dc, 1, CPoint(5, 7), ILD_TRANSPARENT));
    EXPECT_EQ((RECT{9, 11, 17, 19}), probe.BoundingBox(kBlue));  // the square 4 pixels in
    EXPECT_EQ(0, probe.Count(kMagenta));                           // the mask kept the white
    EXPECT_EQ(0, probe.Count(kRed));

    // Only the part given by the size is drawn, starting at the bitmap origin.
    ASSERT_TRUE(list.DrawIndirect(&dc, 0, CPoint(30, 7), CSize(10, 10), CPoint(2, 2), ILD_TRANSPARENT));
    EXPECT_EQ((RECT{32, 9, 40, 17}), probe.BoundingBox(kRed));

    // ILD_NORMAL with a background colour fills the masked area with it.
    list.SetBkColor(RGB(0, 128, 0));
    EXPECT_EQ(RGB(0, 128, 0), list.GetBkColor());
    ASSERT_TRUE(list.Draw(&dc, 0, CPoint(44, 20), ILD_NORMAL));
    const RECT cell = {44, 20, 60, 36};
    EXPECT_EQ(cell, probe.BoundingBox(RGB(0, 128, 0), &cell));
    EXPECT_FALSE(list.Draw(&dc, 7, CPoint(0, 0), ILD_NORMAL));
    dc.Detach();
    probe.SaveIfFailed();
}

TEST(ImageList, OwnershipFollowsAttachDetachAndFromHandle)
{
    HIMAGELIST raw = ImageList_Create(8, 8, ILC_COLOR32, 1, 1);
    ASSERT_NE(nullptr, raw);
    CImageList* temp = CImageList::FromHandle(raw);
    ASSERT_NE(nullptr, temp);
    EXPECT_EQ(nullptr, CImageList::FromHandlePermanent(raw));
    CImageList::DeleteTempMap();
    EXPECT_EQ(0, ImageList_GetImageCount(raw));  // still a valid list
    EXPECT_TRUE(ImageList_SetImageCount(raw, 3));

    CImageList owner;
    ASSERT_TRUE(owner.Attach(raw));
    EXPECT_EQ(&owner, CImageList::FromHandle(raw));
    EXPECT_EQ(&owner, CImageList::FromHandlePermanent(raw));
    EXPECT_EQ(3, owner.GetImageCount());
    EXPECT_EQ(raw, owner.Detach());
    EXPECT_EQ(nullptr, owner.GetSafeHandle());
    EXPECT_FALSE(owner.DeleteImageList());
    EXPECT_EQ(nullptr, CImageList::FromHandlePermanent(raw));

    CImageList copy;
    {
        CImageList original;
        original.Attach(raw);
        ASSERT_TRUE(copy.Create(&original));
        EXPECT_NE(raw, copy.m_hImageList);
        EXPECT_TRUE(original.DeleteImageList());
        EXPECT_EQ(nullptr, original.m_hImageList);
    }
    EXPECT_EQ(3, copy.GetImageCount());  // the duplicate outlives the original
    const CImageList* none = nullptr;
    EXPECT_EQ(nullptr, none->GetSafeHandle());
    EXPECT_EQ(nullptr, CImageList::FromHandle(nullptr));
}
