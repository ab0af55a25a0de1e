#include "app/demo.h"

#include "core/files.h"
#include "core/paths.h"
#include "core/settingsstore.h"
#include "providers/stationselection.h"
#include "tools/service/documentservice.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace Tarnby
{

namespace
{

QString documentsFolder()
{
    return ProgramFolder() + QStringLiteral("/demo");
}

// Tacoma Narrows Airport: the station whose real documents the demo holds.
StationEntry demoStation()
{
    StationEntry station;
    station.City = QStringLiteral("Tacoma, WA (Tacoma Narrows Airport)");
    station.Code = QStringLiteral("KTIW");
    station.ZipCode = QStringLiteral("98335");
    station.Latitude = QStringLiteral("47.2675");
    station.Longitude = QStringLiteral("-122.57611");
    station.StationType = QStringLiteral("NWS");
    return station;
}

// Copies the recorded documents into folder, each moved to today.
bool copyShiftedDocuments(const QString &folder)
{
    const QString source = documentsFolder();
    const QDate today = QDate::currentDate();
    for (QDirIterator it(source, QDir::Files, QDirIterator::Subdirectories); it.hasNext();) {
        const QString path = it.next();
        const QString target = folder + path.mid(source.size());
        if (!QDir().mkpath(QFileInfo(target).path())) return false;
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) return false;
        const QByteArray bytes = file.readAll();
        const bool written =
            bytes.contains('\0')
                ? QFile::copy(path, target)
                : WriteFileAtomic(target, ShiftDocumentDates(QString::fromUtf8(bytes), today));
        if (!written) return false;
    }
    return true;
}

} // namespace

QString ShiftDocumentDates(const QString &document, const QDate &today)
{
    // "2021-09-18", and "2021/09/18" as the METAR station files write it.
    static const QRegularExpression dateMark(QStringLiteral(R"((\d{4})([-/])(\d{2})\2(\d{2}))"));
    const auto dateOf = [](const QRegularExpressionMatch &m) {
        return QDate(m.captured(1).toInt(), m.captured(3).toInt(), m.captured(4).toInt());
    };
    const QRegularExpressionMatch first = dateMark.match(document);
    const QDate anchor = first.hasMatch() ? dateOf(first) : QDate();
    if (!anchor.isValid()) return document;
    const qint64 days = anchor.daysTo(today);
    QString shifted;
    qsizetype done = 0;
    for (auto it = dateMark.globalMatch(document); it.hasNext();) {
        const QRegularExpressionMatch m = it.next();
        const QDate date = dateOf(m);
        const QString mark = m.captured(2);
        shifted += document.mid(done, m.capturedStart() - done);
        shifted += date.isValid()
                       ? date.addDays(days).toString(QStringLiteral("yyyy%1MM%1dd").arg(mark))
                       : m.captured();
        done = m.capturedEnd();
    }
    shifted += document.mid(done);
    const QString metarDay =
        QStringLiteral(R"(\b%1(\d{4}Z)\b)").arg(anchor.day(), 2, 10, QLatin1Char('0'));
    return shifted.replace(QRegularExpression(metarDay),
                           QStringLiteral("%1\\1").arg(today.day(), 2, 10, QLatin1Char('0')));
}

Demo::Demo() = default;

Demo::~Demo()
{
    if (m_service) m_service->stop();
}

QString Demo::defaultProfile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/Tarnby-demo");
}

bool Demo::startService()
{
    if (!FolderExists(documentsFolder())) return false;
    m_served = std::make_unique<QTemporaryDir>();
    if (!m_served->isValid() || !copyShiftedDocuments(m_served->path())) return false;
    m_service = std::make_unique<DocumentService>();
    m_port = m_service->start(QFile::encodeName(m_served->path()).toStdString());
    return m_port > 0;
}

QString Demo::address() const
{
    return QStringLiteral("http://127.0.0.1:%1").arg(m_port);
}

void Demo::prepareProfile()
{
    SavePref(QStringLiteral("Hosts"), QStringLiteral("Override"), address());
    const QString entry = demoStation().toLine();
    SaveWeatherStation(entry);
    ChangeWeatherStation(entry);
}

} // namespace Tarnby
