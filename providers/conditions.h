#pragma once
// What every live reader has in common once its values stand in the Current branch of
// the Weather cache: the pressure rate and trend, the condition words, the humidex,
// the balloon that tells the user of a change, the hand-over of a reading to the
// observation database, and the reader of the pipe-delimited live record.
//
// A live path runs RememberConditions first and StoreLastPressure last. Nothing here
// throws; a value that is missing reads "N/A" or the empty text.

#include <QString>
#include <QStringList>

#include <functional>

namespace Tarnby
{

// Copies the cached "observed" and "pressure" aside before a reading begins.
void RememberConditions();
// When the reading brought a new observation time, the pressure remembered from before
// it becomes Cache/last-pressure, which so stands one observation behind.
void StoreLastPressure();

// "pressure-rate" when it is a number; else the difference of "pressure" and
// Cache/last-pressure in "0.00", with "+" in front when it is not negative; else empty.
QString GetPressureRate();
// "pressure" + suffix ("", "-high", "-low", "-rate"), the twin when the user's pressure
// unit is not "inches"; "N/A" when empty. withUnit adds the unit and, unless the suffix
// is "-rate", " and falling", " and rising" or " and steady" by the sign of the rate.
QString GetPressureText(bool withUnit, const QString &suffix = QString());
// "description", for an international station the day's short title, then the first
// hour's description; "N/A" when none has words.
QString GetCurrentCondition();

// "humidex" (°F) and "humidexC" (°C) from "temp" and "dew-point". When either is
// missing "humidexC" is "N/A" and "humidex" reads 32, the Fahrenheit of nothing.
void UpdateHumidex();
// The same for each hour of the Hourly branch up to its count.
void UpdateHourlyHumidex();

// The tray shows the balloon; its text is the tooltip template's. Without a handler
// the pop is only logged.
void setConditionBalloonHandler(std::function<void()> handler);
void PopConditionBalloon();

// The change detection of a live reader, steered by TrayTooltip/PopTrayBalloonWhen: a
// text of "|"-separated words, compared in lower case ("barometer changes", "condition
// changes", "dew point changes", "feels like changes", "humidity changes", "last
// observed changes", "temperature changes", "wind changes").
class ConditionWatch
{
public:
    // How a reader keeps the observation time: "observed" alone, or the ob-date- keys.
    enum class ObservedForm { ObservedKey, ObDateKeys };

    // Takes the snapshot of the watched values and the cached "station-id".
    explicit ConditionWatch(ObservedForm form = ObservedForm::ObservedKey);
    bool watching() const { return !m_option.isEmpty(); }
    // After the reading: pops one balloon at the first watched value that differs from
    // its snapshot, unless the station changed. An empty snapshot (not watched, or no
    // value yet) never pops. With ignoreMissing a fresh value that is empty or "N/A"
    // does not count either. True when the balloon popped.
    bool popIfChanged(bool ignoreMissing = false) const;

private:
    QString freshValue(int word) const;

    ObservedForm m_form;
    QString m_option;
    QString m_stationId;
    QStringList m_snapshot;
};

// Queues the reading standing in the cache for the observation database, when the
// database exists and the reading has an observation time.
void SaveObservation();

// The realtime tick stops asking after ten failures in a row; a good reading starts the
// count afresh.
void CountLiveReading(bool found);

// Reads the pipe-delimited live record at documentPath into a fresh Current branch.
// A record of 10 characters or less changes nothing. A record that ends early leaves
// the keys written so far, and ProcessingConditions raised until a reading ends well.
// newData and force are the retrieval run's flags; the record is always read.
void ProcessPwsConditions(const QString &documentPath, bool newData = false, bool force = false);

} // namespace Tarnby
