#include "app/singleinstance.h"

#include "core/paths.h"

#include <QCryptographicHash>
#include <QLocalServer>
#include <QLocalSocket>

namespace Tarnby
{

namespace
{
constexpr int kConnectMs = 500;
}

SingleInstance::SingleInstance(QObject *parent) : QObject(parent) {}

SingleInstance::~SingleInstance() = default;

QString SingleInstance::serverName()
{
    QString name = QStringLiteral("Tarnby-") + qEnvironmentVariable("USER", QStringLiteral("user"));
    if (!profileOverride().isEmpty())
        name += QLatin1Char('-') +
                QString::fromLatin1(
                    QCryptographicHash::hash(profileOverride().toUtf8(), QCryptographicHash::Sha1)
                        .toHex()
                        .left(12));
    return name;
}

bool SingleInstance::becomePrimary()
{
    {
        QLocalSocket probe;
        probe.connectToServer(serverName());
        if (probe.waitForConnected(kConnectMs)) return false;
    }
    // Nobody answered: a socket file left by a crashed instance is stale.
    QLocalServer::removeServer(serverName());
    m_server = new QLocalServer(this);
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    if (!m_server->listen(serverName())) return true; // cannot guard, but must not refuse to start
    connect(m_server, &QLocalServer::newConnection, this, &SingleInstance::readConnection);
    return true;
}

void SingleInstance::readConnection()
{
    while (QLocalSocket *socket = m_server->nextPendingConnection()) {
        connect(socket, &QLocalSocket::readyRead, socket, [this, socket] {
            const QString message = QString::fromUtf8(socket->readAll()).trimmed();
            socket->disconnectFromServer();
            if (!message.isEmpty()) emit messageReceived(message);
        });
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    }
}

bool SingleInstance::sendToPrimary(const QString &message)
{
    QLocalSocket socket;
    socket.connectToServer(serverName());
    if (!socket.waitForConnected(kConnectMs)) return false;
    socket.write(message.toUtf8());
    return socket.waitForBytesWritten(kConnectMs);
}

} // namespace Tarnby
