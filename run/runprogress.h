#pragma once
// How a retrieval run shows itself while it works. The run does not draw: it announces
// its progress and the calls it makes into the skin (displayProgressBar, the width of
// TB-ProgressBarColor, hiding the bar), and the interface window or the command line
// listens.

#include <QObject>
#include <QString>

namespace Tarnby
{

class RetrievalProgress : public QObject
{
    Q_OBJECT

signals:
    // ProgressPercent after each step (0 to 100).
    void percentChanged(int percent);
    // The skin's "try {displayProgressBar()} catch(err){}", asked for when the interface
    // window is shown at the start of a run.
    void progressBarShown();
    // The width of the progress bar, "<percent>%".
    void progressBarWidthChanged(const QString &width);
    void progressBarHidden();
    // The count of finished download slots changed (out of 10).
    void downloadsCompleted(int completed);
    // A run that got past its program check ended; errorText is empty for a good run.
    void runFinished(bool ok, const QString &errorText);
};

// The one instance, owned by the run layer.
RetrievalProgress &retrievalProgress();

// Adds steps towards ProgressTotal while the percent is under 100 and announces the
// new percent and, when it is not 0, the bar's width.
void ReportProgress(int steps);

} // namespace Tarnby
