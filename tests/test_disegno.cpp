// The drawing stand-in: lines on a control's canvas, with the end point left
// out, the raster operations, clipping, and checked handles.
#include <gtest/gtest.h>

#include <climits>
#include <set>
#include <utility>

#include "platform/disegno.h"
#include "platform/toldeko/toldeko.h"

namespace {

using TPunti = std::set<std::pair<int, int>>;

// The live-test template's frame, 2280: 240 by 195 pixels with a black border.
class DisegnoTest : public ::testing::Test {
protected:
    DisegnoTest() : dlg(nullptr, 10046), cornice(new GStatic(&dlg, 2280)) {}
    ~DisegnoTest() override
    {
        ReleaseDC(cornice->handle(), dc);
        DeleteObject(penna);
    }
    TTela Tela() { return dlg.Finestra().Tela(dlg.Finestra().Indice(2280)); }
    // Pixels that differ from the face, the border left out.
    TPunti Inchiostro()
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

    GDlg dlg;
    GStatic* cornice;
    HDC dc = GetDC(cornice->handle());
    HPEN penna = CreatePen(PS_SOLID, 0, RGB(0, 255, 255));
};

struct TCasoLinea {
    int x0, y0, x1, y1;
    TPunti attesi;
};

class TrattoTest : public DisegnoTest, public ::testing::WithParamInterface<TCasoLinea> {};

TEST_P(TrattoTest, DrawsUpToTheEndPointAndLeavesItOut)
{
    const TCasoLinea& c = GetParam();
    SelectObject(dc, penna);
    Linea(c.x0, c.y0, c.x1, c.y1);
    EXPECT_EQ(Inchiostro(), c.attesi);
    POINT dove{};
    MoveToEx(dc, 0, 0, &dove);
    EXPECT_EQ(dove.x, c.x1) << "LineTo moves the current position to its end";
    EXPECT_EQ(dove.y, c.y1);
}

INSTANTIATE_TEST_SUITE_P(
    Casi, TrattoTest,
    ::testing::Values(TCasoLinea{10, 20, 13, 20, {{10, 20}, {11, 20}, {12, 20}}},
                      TCasoLinea{13, 20, 10, 20, {{13, 20}, {12, 20}, {11, 20}}},
                      TCasoLinea{30, 5, 30, 8, {{30, 5}, {30, 6}, {30, 7}}},
                      TCasoLinea{10, 10, 14, 12, {{10, 10}, {11, 11}, {12, 11}, {13, 12}}},
                      TCasoLinea{50, 50, 50, 50, {}},
                      // far outside on both sides: only the part on the canvas
                      TCasoLinea{INT_MIN, 3, 3, 3, {{1, 3}, {2, 3}}},
                      TCasoLinea{2, INT_MIN, 2, 4, {{2, 1}, {2, 2}, {2, 3}}},
                      TCasoLinea{-5, -5, -100, 2000000000, {}}));

TEST_F(DisegnoTest, XorTwiceRestoresWhileCopyPaints)
{
    const TTela prima = Tela();  // made with the context
    EXPECT_EQ(prima.larghezza, 240);
    EXPECT_EQ(prima.altezza, 195);
    EXPECT_EQ(prima.Pixel(0, 0), coloreBordo);
    EXPECT_EQ(prima.Pixel(1, 1), coloreSfondo);

    SelectObject(dc, penna);
    EXPECT_EQ(SetROP2(dc, R2_XORPEN), R2_COPYPEN);
    Linea(5, 5, 9, 5);
    EXPECT_EQ(Tela().Pixel(5, 5), coloreSfondo ^ 0xFFFF00u);
    Linea(5, 5, 9, 5);
    EXPECT_EQ(Tela().pixel, prima.pixel);

    SetROP2(dc, R2_COPYPEN);
    Linea(5, 5, 9, 5);
    Linea(5, 5, 9, 5);
    EXPECT_EQ(Tela().Pixel(8, 5), 0xFFFF00u);
    SetROP2(dc, R2_NOT);
    Linea(8, 5, 9, 5);
    EXPECT_EQ(Tela().Pixel(8, 5), 0x0000FFu);
}

TEST_F(DisegnoTest, DeadHandlesChangeNothing)
{
    int sconosciuto = 0;
    EXPECT_EQ(GetDC(&sconosciuto), nullptr);
    EXPECT_EQ(LineTo(&sconosciuto, 5, 5), 0);
    EXPECT_EQ(SetROP2(dc, 17), 0);
    EXPECT_EQ(ReleaseDC(dlg.handle(), dc), 0) << "a context goes only with its own window";

    HDC altro = GetDC(cornice->handle());
    ASSERT_NE(altro, nullptr);
    EXPECT_EQ(ReleaseDC(cornice->handle(), altro), 1);
    EXPECT_EQ(MoveToEx(altro, 1, 1, nullptr), 0);
    EXPECT_EQ(LineTo(altro, 9, 1), 0);

    HPEN p = CreatePen(PS_SOLID, 0, 0xFF);
    EXPECT_EQ(DeleteObject(p), 1);
    EXPECT_EQ(DeleteObject(p), 0);
    EXPECT_EQ(SelectObject(dc, p), nullptr);
    EXPECT_TRUE(Inchiostro().empty());
}

}  // namespace
