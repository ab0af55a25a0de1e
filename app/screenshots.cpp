// tarnby-screenshots: pictures of every page of interface skins, at the skin's default
// and minimum size, filled with the demo station's data from the built-in demo service.
//
//   tarnby-screenshots OUTPUT_FOLDER [SKIN...]
//
// Without skin names it takes every skin of <program folder>/Skins/Interface. The run
// uses a throwaway profile, so the user's and the demo's own are left alone. Pictures
// are named <skin>-<default|minimum>-<page>.png.

#include "app/demo.h"
#include "app/startup.h"
#include "app/wiring.h"
#include "core/files.h"
#include "core/paths.h"
#include "core/settingsstore.h"
#include "presentation/interfacewindow.h"
#include "run/retrievalrun.h"

#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>

using namespace Tarnby;

namespace
{

// Time for a page's own scripts (fades, late images) after it was shown or switched.
constexpr int kSettleMs = 700;
constexpr int kLoadWaitMs = 30000;

void pause(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

bool waitForPage(frmIface &window)
{
    QEventLoop loop;
    bool shown = false;
    const auto connection = QObject::connect(&window, &frmIface::pageShown, &loop, [&] {
        shown = true;
        loop.quit();
    });
    QTimer::singleShot(kLoadWaitMs, &loop, &QEventLoop::quit);
    loop.exec();
    QObject::disconnect(connection);
    return shown;
}

QStringList installedSkins()
{
    return QDir(ProgramFolder() + QStringLiteral("/Skins/Interface"))
        .entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}

// The demo station's data in a profile of its own.
bool prepareProfile(Demo &demo, const QString &profile)
{
    setProfileOverride(profile);
    OpenSettingsStore(QString());
    if (!demo.startService()) return false;
    ChooseProfileFolder();
    demo.prepareProfile();
    InstallRetrievalWiring();
    RunStartup(QString());
    UpdateTheWeather(false, false, false);
    return true;
}

int shootSkin(const QString &skin, const QString &output, QTextStream &out)
{
    SavePref(QStringLiteral("Skins"), QStringLiteral("Interface"), skin);
    SavePref(QStringLiteral("Misc"), QStringLiteral("IfaceWidth"), QString());
    SavePref(QStringLiteral("Misc"), QStringLiteral("IfaceHeight"), QString());
    SavePref(QStringLiteral("Misc"), QStringLiteral("LastPage"), QStringLiteral("Current"));
    frmIface window;
    if (window.skinName() != skin) {
        out << skin << ": cannot be shown, skipped" << Qt::endl;
        return 0;
    }
    window.ShowInterface();
    window.RefreshInterface(false, false);
    if (!waitForPage(window)) {
        out << skin << ": the page did not load" << Qt::endl;
        return 0;
    }
    const QList<std::pair<QString, QSize>> sizes{{QStringLiteral("default"), window.size()},
                                                 {QStringLiteral("minimum"), window.minimumSize()}};
    const QStringList pages{QStringLiteral("Current"), QStringLiteral("Hourly"),
                            QStringLiteral("Daily"), QStringLiteral("Pop")};
    int taken = 0;
    for (const auto &[sizeName, size] : sizes) {
        if (size.isEmpty()) continue;
        window.resize(size);
        for (const QString &page : pages) {
            window.RunAction(QStringLiteral("show") + page);
            pause(kSettleMs);
            const QString file =
                QStringLiteral("%1/%2-%3-%4.png").arg(output, skin, sizeName, page.toLower());
            if (window.grab().save(file)) ++taken;
            out << file << Qt::endl;
        }
    }
    return taken;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Tarnby"));
    QTextStream out(stdout);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    if (arguments.isEmpty()) {
        QTextStream(stderr) << "usage: tarnby-screenshots OUTPUT_FOLDER [SKIN...]" << Qt::endl;
        return 2;
    }
    const QString output = QDir(arguments.takeFirst()).absolutePath();
    CreateFolder(output);
    const QStringList skins = arguments.isEmpty() ? installedSkins() : arguments;

    QTemporaryDir profile;
    Demo demo;
    if (!prepareProfile(demo, profile.path())) {
        QTextStream(stderr) << "tarnby-screenshots: the demo service did not start" << Qt::endl;
        return 1;
    }
    int taken = 0;
    for (const QString &skin : skins)
        taken += shootSkin(skin, output, out);
    ExitTB();
    out << taken << " pictures in " << output << Qt::endl;
    return taken > 0 ? 0 : 1;
}
