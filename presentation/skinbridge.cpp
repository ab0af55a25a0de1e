#include "presentation/skinbridge.h"

#include "core/files.h"
#include "core/log.h"

#include <QWebChannel>
#include <QWebEnginePage>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>

namespace Tarnby
{

namespace
{

// Qt's own client of the web channel and the watcher, as one script.
QWebEngineScript bridgeScript()
{
    static const QString source = ReadFile(QStringLiteral(":/qtwebchannel/qwebchannel.js")) +
                                  u'\n' + ReadFile(QStringLiteral(":/tarnby/bridge.js"));
    if (source.trimmed().isEmpty())
        Log(QStringLiteral("The skin bridge script is missing (frmIface)"));
    QWebEngineScript script;
    script.setName(QStringLiteral("tarnby-bridge"));
    script.setSourceCode(source);
    script.setInjectionPoint(QWebEngineScript::DocumentCreation);
    script.setWorldId(QWebEngineScript::ApplicationWorld);
    script.setRunsOnSubFrames(false);
    return script;
}

} // namespace

void SkinBridge::attach(QWebEnginePage *page)
{
    auto *channel = new QWebChannel(page);
    channel->registerObject(QStringLiteral("tarnby"), this);
    page->setWebChannel(channel, QWebEngineScript::ApplicationWorld);
    page->scripts().insert(bridgeScript());
}

void SkinBridge::runAction(const QString &word)
{
    emit actionRequested(word);
}

} // namespace Tarnby
