// The drawing stand-in: lines on a canvas without their end point, any direction, clipped.
#include <gtest/gtest.h>

#include <climits>
#include <set>
#include <utility>

#include "platform/disegno.h"
#include "platform/toldeko/toldeko.h"

namespace {

using TPunti = std::set<std::pair<int, int>>;

// Lines on the live test's frame 2280, 240 by 195 pixels inside a border.
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
        GDlg dlg(nullptr, 10046);
        GStatic* cornice = new GStatic(&dlg, 2280);
        HDC dc = GetDC(cornice->handle());
        HPEN penna = CreatePen(PS_SOLID, 0, RGB(0, 255, 255));
        SelectObject(dc, penna);
        MoveToEx(dc, c.x0, c.y0, nullptr);
        LineTo(dc, c.x1, c.y1);
        const TTela t = dlg.Finestra().Tela(dlg.Finestra().Indice(2280));
        TPunti inchiostro;  // the border left out
        for (int y = 1; y < t.altezza - 1; ++y)
            for (int x = 1; x < t.larghezza - 1; ++x)
                if (t.Pixel(x, y) != coloreSfondo) inchiostro.insert({x, y});
        EXPECT_EQ(inchiostro, c.attesi);
        POINT dove{};
        MoveToEx(dc, 0, 0, &dove);
        EXPECT_EQ(dove.x, c.x1) << "LineTo moves the current position to its end";
        EXPECT_EQ(dove.y, c.y1);
        ReleaseDC(cornice->handle(), dc);
        DeleteObject(penna);
    }
}

}  // namespace
