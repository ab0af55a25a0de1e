#pragma once
// What the forecast readers share: the document and its period list, the values of a
// period, the service's dates, and the frame in which a reader writes its branch.

#include "core/settingsstore.h"
#include "providers/forecasts.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <optional>

namespace Tarnby
{

inline const QString kLastUpdatedSection = QStringLiteral("LastUpdated");

// The downloaded document with every line end as CR LF, the service's own, so that a
// copy saved with bare line feeds reads the same.
QString ReadForecastDocument(const QString &documentPath);

// The periods of the list that opens with listMark (`"hourlyForecastPeriod": [`) and
// ends at the next "]", parted at "}," CR LF. Nothing when the list is not there whole;
// an empty list gives no period.
std::optional<QStringList> CutPeriods(const QString &document, const QString &listMark);

// A value of a period as ReadJsonValue reads it, "N/A" where the period has none.
QString PeriodValue(const QString &period, const char *key);
// The value when it is a number, else "N/A".
QString NumberOrNotAvailable(const QString &value);

// The service's "2024-04-15T14:30:00" (a "Z" behind it ignored) as a wall-clock reading,
// and its date alone ("the part before the T"); nothing for other text.
std::optional<QDateTime> ServiceTime(const QString &text);
QDate ServiceDate(const QString &text);
// A date in the system's short form.
QString ShortDateText(const QDate &date);

// Logs why a document was not used and sets its failure flag.
void ForecastNotRead(ForecastDocument document, const QString &why, const char *routine);

// The frame of one branch rewrite: ProcessingForecasts raised and the writes held in one
// batch of the settings store for its lifetime.
class ForecastWriting
{
public:
    ForecastWriting();
    ~ForecastWriting();
    ForecastWriting(const ForecastWriting &) = delete;
    ForecastWriting &operator=(const ForecastWriting &) = delete;

private:
    SettingsBatch m_batch;
    bool m_wasProcessing;
};

} // namespace Tarnby
