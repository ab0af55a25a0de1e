#include "run/runprogress.h"

#include "run/runstate.h"

namespace Tarnby
{

RetrievalProgress &retrievalProgress()
{
    static RetrievalProgress progress;
    return progress;
}

void ReportProgress(int steps)
{
    RunState &state = runState();
    if (state.ProgressPercent >= 100) return;
    state.ProgressSteps += steps;
    state.ProgressPercent = state.ProgressSteps * 100 / state.ProgressTotal;
    emit retrievalProgress().percentChanged(state.ProgressPercent);
    if (state.ProgressPercent != 0)
        emit retrievalProgress().progressBarWidthChanged(QString::number(state.ProgressPercent) +
                                                         QLatin1Char('%'));
}

} // namespace Tarnby
