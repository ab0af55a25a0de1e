#include "presentation/trayicondrawing.h"

#include "tests/presentation/snapshot.h"

#include <QImage>

#include <gtest/gtest.h>

using namespace Tarnby;

namespace
{

// The ink of the digits: pixels close to the foreground colour.
QRect inkOf(const QImage &image, const QColor &foreground)
{
    QRect ink;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor c = image.pixelColor(x, y);
            if (c.alpha() > 200 && std::abs(c.red() - foreground.red()) < 60 &&
                std::abs(c.green() - foreground.green()) < 60 &&
                std::abs(c.blue() - foreground.blue()) < 60)
                ink |= QRect(x, y, 1, 1);
        }
    return ink;
}

const TrayColourSet kWhiteOnBlack{Qt::white, Qt::black, false};

struct DrawCase {
    const char *text;
    int side;
    qreal ratio;
};

class DigitsDrawing : public ::testing::TestWithParam<DrawCase>
{
};

TEST_P(DigitsDrawing, DigitsAreCentredAndFitTheIcon)
{
    const DrawCase &c = GetParam();
    const QImage image =
        DrawTrayDigits(QString::fromUtf8(c.text), TrayFontSpec{}, kWhiteOnBlack, c.side, c.ratio);
    const int pixels = int(c.side * c.ratio);
    Tarnby::Test::keepSnapshot(image, QStringLiteral("digits-%1-%2px-x%3")
                                          .arg(QString::fromUtf8(c.text))
                                          .arg(c.side)
                                          .arg(c.ratio));
    ASSERT_EQ(image.size(), QSize(pixels, pixels));
    EXPECT_EQ(image.devicePixelRatio(), c.ratio);
    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::black));
    const QRect ink = inkOf(image, Qt::white);
    ASSERT_TRUE(ink.isValid()) << "no digits drawn";
    // Inside the square, and using a fair share of it.
    EXPECT_GE(ink.left(), 0);
    EXPECT_LT(ink.right(), pixels);
    EXPECT_GE(ink.height(), pixels / 3);
    // Centred within two pixels (rounding of the glyph boxes).
    EXPECT_NEAR(ink.center().x(), pixels / 2.0, 2.0 * c.ratio);
    EXPECT_NEAR(ink.center().y(), pixels / 2.0, 2.0 * c.ratio);
}

INSTANTIATE_TEST_SUITE_P(Sizes, DigitsDrawing,
                         ::testing::Values(DrawCase{"72", 22, 1}, DrawCase{"72", 16, 2},
                                           DrawCase{"-5", 16, 1}, DrawCase{"NA", 22, 1},
                                           DrawCase{"105", 16, 1}, DrawCase{"78.4", 32, 1},
                                           DrawCase{"-12\u00b0", 22, 1}));

TEST(DigitsDrawingLook, TransparentSetLeavesTheBackgroundClear)
{
    const TrayColourSet clear{QColor(255, 255, 255), Qt::black, true};
    const QImage image = DrawTrayDigits(QStringLiteral("72"), TrayFontSpec{}, clear, 22);
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
    // White stays a colour that is drawn: no colour is kept back as a mask.
    EXPECT_TRUE(inkOf(image, Qt::white).isValid());
}

TEST(DigitsDrawingLook, ItalicAndBoldChangeTheInk)
{
    TrayFontSpec upright;
    TrayFontSpec slanted = upright;
    slanted.italic = true;
    const QImage a = DrawTrayDigits(QStringLiteral("72"), upright, kWhiteOnBlack, 32);
    const QImage b = DrawTrayDigits(QStringLiteral("72"), slanted, kWhiteOnBlack, 32);
    Tarnby::Test::keepSnapshot(b, QStringLiteral("digits-72-32px-italic"));
    EXPECT_NE(a, b);
}

TEST(DigitsDrawingLook, IconHoldsTheTraysOwnSizeAtTheScreensRatio)
{
    const QIcon icon = TrayDigitsIcon(QStringLiteral("72"), TrayFontSpec{}, kWhiteOnBlack, 27, 2.0);
    EXPECT_TRUE(icon.availableSizes().contains(QSize(54, 54)));
}

} // namespace
