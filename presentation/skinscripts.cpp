#include "presentation/skinscripts.h"

#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "template/expander.h"

#include <QStringList>

namespace Tarnby
{

QString GuardedCall(const QString &call)
{
    return QStringLiteral("try {") + call + QStringLiteral("} catch(err){}");
}

QString ScriptString(const QString &text)
{
    QString escaped;
    escaped.reserve(text.size() + 2);
    for (const QChar c : text) {
        if (c == u'\\' || c == u'\'') escaped += u'\\';
        if (c == u'\n')
            escaped += QStringLiteral("\\n");
        else if (c == u'\r')
            escaped += QStringLiteral("\\r");
        else if (c == QChar(0x2028) || c == QChar(0x2029))
            escaped += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16);
        else
            escaped += c;
    }
    return u'\'' + escaped + u'\'';
}

QString RealtimeScriptArguments(const QString &readings)
{
    const ProcessValues &pv = process();
    QStringList items{pv.UnitTemp, pv.UnitWind, pv.UnitBar, pv.UnitPre, pv.UnitVis};
    const bool degrees = GetPref(QStringLiteral("Conversion"), QStringLiteral("WindInDegrees")) ==
                         QStringLiteral("True");
    items << (degrees ? QStringLiteral("true") : QStringLiteral("false"));
    QString arguments = readings;
    for (const QString &item : items)
        arguments += QStringLiteral(",'") + item + u'\'';
    return arguments;
}

QString ObservedTimeStampText()
{
    QString stamp = ExpandTemplate(QStringLiteral("[OBSERVED TIMEZONE]"), false, false);
    return stamp.replace(QStringLiteral("Updated "), QString());
}

} // namespace Tarnby
