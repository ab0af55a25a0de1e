#pragma once
// The offline demo: a loopback document service inside the process, serving the
// recorded documents of <program folder>/demo, with every host of the program pointed
// at it, on a profile of its own so the user's settings are never touched.

#include <QString>

#include <memory>

namespace Tarnby
{

class DocumentService;

class Demo
{
public:
    Demo();
    ~Demo();
    // The demo profile folder, used unless the command line names one.
    static QString defaultProfile();
    // Starts the service; false when it cannot listen or the documents are missing.
    bool startService();
    // Points every host at the service and makes the demo station the selected one.
    // Needs the settings store open and the profile folder chosen.
    void prepareProfile();
    QString address() const;

private:
    std::unique_ptr<DocumentService> m_service;
    int m_port = 0;
};

} // namespace Tarnby
