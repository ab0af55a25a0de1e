#pragma once
// The offline demo: a loopback document service inside the process, serving the
// recorded documents of <program folder>/demo, with every host of the program pointed
// at it, on a profile of its own so the user's settings are never touched.

#include <QDate>
#include <QString>

#include <memory>

class QTemporaryDir;

namespace Tarnby
{

class DocumentService;

// A recorded document moved in time so that it reads as today's: every ISO date
// (yyyy-mm-dd) moves by the days between the document's first date and today, and a
// METAR time group (ddhhmmZ) of that first day takes today's day.
QString ShiftDocumentDates(const QString &document, const QDate &today);

class Demo
{
public:
    Demo();
    ~Demo();
    // The demo profile folder, used unless the command line names one.
    static QString defaultProfile();
    // Starts the service over today's copy of the documents; false when it cannot
    // listen or the documents are missing.
    bool startService();
    // Points every host at the service and makes the demo station the selected one.
    // Needs the settings store open and the profile folder chosen.
    void prepareProfile();
    QString address() const;

private:
    std::unique_ptr<QTemporaryDir> m_served;
    std::unique_ptr<DocumentService> m_service;
    int m_port = 0;
};

} // namespace Tarnby
