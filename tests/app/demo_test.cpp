// The demo's recorded documents, moved in time so that they read as today's.

#include "app/demo.h"

#include "tests/support/testprofile.h"

using namespace Tarnby;

TEST(DemoDocuments, EveryDateMovesByTheFirstDatesDistanceToToday)
{
    const QDate today(2026, 11, 23);
    EXPECT_EQ(ShiftDocumentDates(R"({"a": "2021-09-18T13:53:00+00:00", "b": "2021-09-30"})", today),
              R"({"a": "2026-11-23T13:53:00+00:00", "b": "2026-12-05"})");
    EXPECT_EQ(ShiftDocumentDates("2021/09/18 13:53\nKTIW 181353Z AUTO 22007KT 10SM A2970\n", today),
              "2026/11/23 13:53\nKTIW 231353Z AUTO 22007KT 10SM A2970\n");
    // Text without a date, and dates that are none, stay as they are.
    EXPECT_EQ(ShiftDocumentDates("no dates here 181353Z", today), "no dates here 181353Z");
    EXPECT_EQ(ShiftDocumentDates("2021-13-45 then 2021-09-18", today),
              "2021-13-45 then 2021-09-18");
}
