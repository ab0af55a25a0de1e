#pragma once
// The skin's way back to the program. An injected script (bridge.js) watches the
// page's element TB-RunAction and hands each action word over a web channel to the
// SkinBridge object, which passes it on as a signal.

#include <QObject>
#include <QString>

class QWebEnginePage;

namespace Tarnby
{

class SkinBridge : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    // Gives the page the channel and the watching script, for every page it loads from
    // now on. The script runs in a world of its own, out of reach of the skin's scripts.
    void attach(QWebEnginePage *page);

public slots:
    // Called by the page; the word is handed on as it was written.
    void runAction(const QString &word);

signals:
    void actionRequested(const QString &word);
};

} // namespace Tarnby
