#pragma once
// One Tarnby per user and profile. The first process listens on a local socket; a
// later one finds it, hands over its message ("TarnbyLaunched") and leaves.

#include <QObject>
#include <QString>

class QLocalServer;

namespace Tarnby
{

class SingleInstance : public QObject
{
    Q_OBJECT
public:
    explicit SingleInstance(QObject *parent = nullptr);
    ~SingleInstance() override;

    // True when no other instance runs; this one then listens for messages.
    bool becomePrimary();
    // Sends a message to the running instance; false when none answers.
    bool sendToPrimary(const QString &message);
    // The socket name: per user, and per profile folder when one is given on the
    // command line, so test profiles never meet the user's own instance.
    static QString serverName();

signals:
    void messageReceived(const QString &message);

private:
    void readConnection();
    QLocalServer *m_server = nullptr;
};

} // namespace Tarnby
