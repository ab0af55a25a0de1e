// Documents the readers cannot use: each leaves its branch as it was, reports the
// failure and lowers ProcessingForecasts.

#include "providers/forecasts.h"

#include "core/processvalues.h"
#include "tests/providers/forecastfixture.h"
#include "tests/support/mutator.h"

using namespace Tarnby;
using namespace Tarnby::Test;

namespace
{

const Reader kReaders[] = {Reader::Daily, Reader::Hourly, Reader::Uv, Reader::WuUv,
                           Reader::NwsText};

class BadInputTest : public ForecastTest
{
protected:
    // Reads the document at path over the reader's good state; true when the branches
    // stayed as they were.
    static bool leavesBranchesAlone(Reader reader, const QString &path)
    {
        const ReaderInfo info = readerInfo(reader);
        const QString before = dump(info.sections);
        info.read(path);
        EXPECT_FALSE(process().ProcessingForecasts);
        return dump(info.sections) == before;
    }

    QString writeDocument(const QString &text) const { return profile.writeFile("document", text); }
};

class UnusableDocument : public BadInputTest,
                         public ::testing::WithParamInterface<std::tuple<Reader, const char *>>
{
};

// Empty files, error pages, missing files, other services' documents and the other
// readers' documents.
TEST_P(UnusableDocument, LeavesTheBranchAndReportsTheFailure)
{
    const auto [reader, document] = GetParam();
    if (QLatin1String(document) == QLatin1String(readerInfo(reader).goodDocument))
        GTEST_SKIP() << "the reader's own document";
    readGoodDocument(reader);
    EXPECT_TRUE(leavesBranchesAlone(reader, dataFile(QLatin1String(document)))) << document;
    EXPECT_TRUE(ForecastFailed(readerInfo(reader).document));
}

INSTANTIATE_TEST_SUITE_P(
    Documents, UnusableDocument,
    ::testing::Combine(::testing::ValuesIn(kReaders),
                       ::testing::Values("forecast/empty.json", "forecast/html-error.html",
                                         "forecast/absent.json", "weatherbug/v4-full.json",
                                         "forecast/daily-week.json", "forecast/hourly-40.json",
                                         "forecast/uv-week.json", "forecast/wu-uv.xml",
                                         "forecast/nws-text.xml")),
    [](const auto &info) {
        return std::string(readerName(std::get<0>(info.param))) + "_" +
               QString::fromLatin1(std::get<1>(info.param))
                   .section('/', 1)
                   .remove('-')
                   .remove('.')
                   .toStdString();
    });

class TruncatedDocument : public BadInputTest, public ::testing::WithParamInterface<Reader>
{
};

// Cut anywhere before the end of what the reader needs: the end of the period list,
// the close of the forecast element, the quote behind the UV index.
qsizetype neededLength(Reader reader, const QString &document)
{
    switch (reader) {
    case Reader::NwsText:
        return document.indexOf("</Forecast>") + 5;
    case Reader::WuUv:
        return document.indexOf(QLatin1Char('"'), document.indexOf("<UV val=\"") + 9);
    default:
        return document.indexOf(QLatin1Char(']'));
    }
}

TEST_P(TruncatedDocument, AnyCutLeavesTheBranch)
{
    const Reader reader = GetParam();
    readGoodDocument(reader);
    const QString document = readDataFile(QLatin1String(readerInfo(reader).goodDocument));
    const qsizetype needed = neededLength(reader, document);
    ASSERT_GT(needed, 0);
    for (int fifth = 0; fifth <= 5; ++fifth) {
        const qsizetype cut = needed * fifth / 5;
        EXPECT_TRUE(leavesBranchesAlone(reader, writeDocument(document.left(cut)))) << cut;
        EXPECT_TRUE(ForecastFailed(readerInfo(reader).document)) << cut;
    }
}

// Damaged marks and values in random places: whatever is read, nothing crashes and the
// flag is lowered.
TEST_P(TruncatedDocument, ScrambledDocumentsAreSurvived)
{
    const Reader reader = GetParam();
    const QString document = readDataFile(QLatin1String(readerInfo(reader).goodDocument));
    Mutator mutator(20240415, characters("{}[]\",:\r\n<>/=T0-. aZ"));
    for (int round = 0; round < 40; ++round) {
        readerInfo(reader).read(writeDocument(mutator.mutated(document, 12)));
        EXPECT_FALSE(process().ProcessingForecasts);
    }
}

INSTANTIATE_TEST_SUITE_P(Readers, TruncatedDocument, ::testing::ValuesIn(kReaders),
                         [](const auto &info) { return std::string(readerName(info.param)); });

} // namespace
