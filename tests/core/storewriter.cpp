// A settings writer that runs until it is killed: the crash-safety test starts it,
// lets it write for a moment and kills it mid-way.
//
//   test_core_storewriter <registry file> <ini file> <ini|registry>
//
// Each round writes key "k<n>" = n and then "last" = n, and flushes; "ready" on
// stdout tells the test that writing has begun.

#include "core/settingsstore.h"

#include <QCoreApplication>
#include <QTextStream>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    if (args.size() != 4) return 2;
    Tarnby::SettingsStore::open(args.at(1), args.at(2), args.at(3) == QStringLiteral("ini"));
    QTextStream out(stdout);
    for (qint64 n = 1;; ++n) {
        Tarnby::SavePref(QStringLiteral("Crash"), QStringLiteral("k%1").arg(n), QString::number(n));
        Tarnby::SavePref(QStringLiteral("Crash"), QStringLiteral("last"), QString::number(n));
        Tarnby::SettingsStore::flush();
        if (n == 20) out << "ready" << Qt::endl;
    }
}
