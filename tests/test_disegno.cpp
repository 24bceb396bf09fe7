// The drawing stand-in: lines on a control's canvas with the end point left
// out, the raster operations, clipping, and checked handles.
#include <gtest/gtest.h>

#include <climits>
#include <set>
#include <utility>

#include "platform/disegno.h"
#include "platform/toldeko/toldeko.h"

namespace {

using TPunti = std::set<std::pair<int, int>>;

// On the live test's frame 2280: 240 by 195 pixels inside a black border.
struct TCornice {
    ~TCornice()
    {
        ReleaseDC(cornice->handle(), dc);
        DeleteObject(penna);
    }
    TTela Tela() { return dlg.Finestra().Tela(dlg.Finestra().Indice(2280)); }
    TPunti Inchiostro()  // pixels off the face, the border left out
    {
        TPunti p;
        const TTela t = Tela();
        for (int y = 1; y < t.altezza - 1; ++y)
            for (int x = 1; x < t.larghezza - 1; ++x)
                if (t.Pixel(x, y) != coloreSfondo) p.insert({x, y});
        return p;
    }
    void Linea(int x0, int y0, int x1, int y1)
    {
        MoveToEx(dc, x0, y0, nullptr);
        LineTo(dc, x1, y1);
    }

    GDlg dlg{nullptr, 10046};
    GStatic* cornice = new GStatic(&dlg, 2280);
    HDC dc = GetDC(cornice->handle());
    HPEN penna = CreatePen(PS_SOLID, 0, RGB(0, 255, 255));
};

TEST(TrattoTest, DrawsUpToTheEndPointAndLeavesItOut)
{
    struct TCaso { int x0, y0, x1, y1; TPunti attesi; };
    const TCaso casi[] = {{10, 20, 13, 20, {{10, 20}, {11, 20}, {12, 20}}},
                          {13, 20, 10, 20, {{13, 20}, {12, 20}, {11, 20}}},
                          {30, 5, 30, 8, {{30, 5}, {30, 6}, {30, 7}}},
                          {10, 10, 14, 12, {{10, 10}, {11, 11}, {12, 11}, {13, 12}}},
                          {50, 50, 50, 50, {}},
                          // far outside: only the part on the canvas, at no cost
                          {INT_MIN, 3, 3, 3, {{1, 3}, {2, 3}}},
                          {2, INT_MIN, 2, 4, {{2, 1}, {2, 2}, {2, 3}}},
                          {-5, -5, -100, 2000000000, {}}};
    for (const TCaso& c : casi) {
        SCOPED_TRACE(::testing::Message() << "(" << c.x0 << "," << c.y0 << ")-(" << c.x1 << "," << c.y1 << ")");
        TCornice f;
        SelectObject(f.dc, f.penna);
        f.Linea(c.x0, c.y0, c.x1, c.y1);
        EXPECT_EQ(f.Inchiostro(), c.attesi);
        POINT dove{};
        MoveToEx(f.dc, 0, 0, &dove);
        EXPECT_EQ(dove.x, c.x1) << "LineTo moves the current position to its end";
        EXPECT_EQ(dove.y, c.y1);
    }
}

TEST(TrattoTest, XorTwiceRestoresCopyPaintsDeadHandlesFail)
{
    TCornice f;
    const TTela prima = f.Tela();  // made with the context
    ASSERT_EQ(prima.larghezza, 240);
    EXPECT_EQ(prima.Pixel(0, 0), coloreBordo);
    EXPECT_EQ(prima.Pixel(1, 1), coloreSfondo);

    SelectObject(f.dc, f.penna);
    EXPECT_EQ(SetROP2(f.dc, R2_XORPEN), R2_COPYPEN);
    f.Linea(5, 5, 9, 5);
    EXPECT_EQ(f.Tela().Pixel(5, 5), coloreSfondo ^ 0xFFFF00u);
    f.Linea(5, 5, 9, 5);
    EXPECT_EQ(f.Tela().pixel, prima.pixel);
    SetROP2(f.dc, R2_COPYPEN);
    f.Linea(5, 5, 9, 5);
    f.Linea(5, 5, 9, 5);
    EXPECT_EQ(f.Tela().Pixel(8, 5), 0xFFFF00u);

    int estraneo = 0;
    EXPECT_EQ(GetDC(&estraneo), nullptr);
    EXPECT_EQ(SetROP2(f.dc, 17), 0);
    EXPECT_EQ(ReleaseDC(f.dlg.handle(), f.dc), 0) << "a context goes only with its own window";
    HDC altro = GetDC(f.cornice->handle());
    EXPECT_EQ(ReleaseDC(f.cornice->handle(), altro), 1);
    EXPECT_EQ(LineTo(altro, 9, 30), 0);
    HPEN p = CreatePen(PS_SOLID, 0, 0xFF);
    EXPECT_EQ(DeleteObject(p), 1);
    EXPECT_EQ(DeleteObject(p), 0);
    EXPECT_EQ(SelectObject(f.dc, p), nullptr);
    EXPECT_EQ(f.Inchiostro(), (TPunti{{5, 5}, {6, 5}, {7, 5}, {8, 5}}));
}

}  // namespace
