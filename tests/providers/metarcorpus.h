#pragma once
// The real METAR reports kept in tests/data/metar, for tests and benchmarks: every
// report line of the station files and report lists, and the raw message of each NWS
// observation document. Date lines of the station files and empty lines are skipped.

#include <QDir>
#include <QFile>
#include <QStringList>

namespace Tarnby::Test
{

inline bool isReportLine(const QString &line)
{
    // Station files put a date line ("2023/01/12 00:56") above the report.
    return !line.isEmpty() && !(line.size() == 16 && line.at(4) == u'/' && line.at(13) == u':');
}

inline QString rawMessage(const QString &document)
{
    const QString mark = QStringLiteral("\"rawMessage\": \"");
    const qsizetype start = document.indexOf(mark);
    if (start < 0) return {};
    const qsizetype begin = start + mark.size();
    return document.mid(begin, document.indexOf(u'"', begin) - begin);
}

// With `withEdited`, also the list whose reports were edited by hand (MOCK), which is
// US-format but no service output.
inline QStringList metarCorpus(const QString &folder, bool withEdited)
{
    QStringList reports;
    const QDir dir(folder);
    for (const QString &name : dir.entryList(QDir::Files, QDir::Name)) {
        if (!withEdited && name.contains(QLatin1String("MOCK"))) continue;
        QFile file(dir.filePath(name));
        if (!file.open(QIODevice::ReadOnly)) continue;
        const QString text = QString::fromUtf8(file.readAll());
        if (name.endsWith(QLatin1String(".json"))) {
            reports << rawMessage(text);
        } else if (name.endsWith(QLatin1String(".txt"), Qt::CaseInsensitive)) {
            for (const QString &line : text.split(u'\n'))
                if (isReportLine(line.trimmed())) reports << line.trimmed();
        }
    }
    return reports;
}

} // namespace Tarnby::Test
