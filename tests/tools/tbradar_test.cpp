// The map drawer: the picture of the chosen map type into <folder>/map.jpg, whole or
// not at all.
#include "tests/tools/childfixture.h"

#include "core/files.h"

namespace Tarnby::Test
{
namespace
{

class TbRadarTest : public ChildProgramTest
{
protected:
    ChildRun draw(const QString &mapType, const QString &radarPath, const QString &satellitePath)
    {
        QProcessEnvironment environment = childEnvironment();
        environment.insert(QStringLiteral("TARNBY_RADAR_IMAGE"), url(radarPath));
        environment.insert(QStringLiteral("TARNBY_SATELLITE_IMAGE"), url(satellitePath));
        return run(QStringLiteral("tbradar"),
                   {m_work.path(), QStringLiteral("MapSource5"),
                    QStringLiteral("MapType") + mapType, QStringLiteral("6")},
                   environment);
    }
    QByteArray picture() const
    {
        QFile file(m_work.filePath(QStringLiteral("map.jpg")));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

TEST_F(TbRadarTest, DrawsThePictureOfTheChosenType)
{
    writeDocument(QStringLiteral("radar.gif"), "GIF89a radar");
    writeDocument(QStringLiteral("sat.jpg"), "JFIF satellite");
    EXPECT_EQ(draw(QStringLiteral("radar"), "/radar.gif", "/sat.jpg").exitCode, 0);
    EXPECT_EQ(picture(), "GIF89a radar");
    EXPECT_EQ(draw(QStringLiteral("satellite"), "/radar.gif", "/sat.jpg").exitCode, 0);
    EXPECT_EQ(picture(), "JFIF satellite");
}

TEST_F(TbRadarTest, AFailedFetchKeepsTheOldPicture)
{
    writeDocument(QStringLiteral("radar.gif"), "GIF89a radar");
    ASSERT_EQ(draw(QStringLiteral("radar"), "/radar.gif", "/sat.jpg").exitCode, 0);
    EXPECT_EQ(draw(QStringLiteral("radar"), "/missing.gif", "/sat.jpg").exitCode, 1);
    EXPECT_EQ(picture(), "GIF89a radar");
}

TEST_F(TbRadarTest, BadCommandLinesDrawNothing)
{
    const ChildRun result = run(QStringLiteral("tbradar"), {m_work.path()});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_FALSE(result.errors.isEmpty());
    EXPECT_TRUE(picture().isEmpty());
}

} // namespace
} // namespace Tarnby::Test
