#include "template/exportlog.h"

#include "core/files.h"
#include "core/log.h"
#include "core/settingsstore.h"
#include "template/expander.h"
#include "template/passtools.h"

#include <QFile>

namespace Tarnby
{

namespace
{

const QString kLineEnd = QStringLiteral("\r\n");

bool isEnabled(const QString &section)
{
    return GetPref(section, QStringLiteral("Enable")) == u"True";
}

bool appendText(const QString &path, const QString &text)
{
    QFile file(path);
    const QByteArray bytes = text.toUtf8();
    // One write of the whole line, so a reader never sees a part of it.
    return file.open(QIODevice::WriteOnly | QIODevice::Append) && file.write(bytes) == bytes.size();
}

} // namespace

bool WriteTemplateFile(const QString &templateText, const QString &path, bool append,
                       bool useEntities)
{
    const QString text = ExpandTemplate(TrimBlanks(templateText), useEntities, true) + kLineEnd;
    const bool written = append ? appendText(path, text) : WriteFileAtomic(path, text);
    if (!written) Log(QStringLiteral("Cannot write %1 (WriteTemplateFile)").arg(path));
    return written;
}

void RunExport()
{
    const QString section = QStringLiteral("Export");
    if (!isEnabled(section)) return;
    const QString path = GetPref(section, QStringLiteral("ExportFile"));
    QString text = GetPref(section, QStringLiteral("ExportTemplate"));
    text.replace(QStringLiteral("[CRLF]"), kLineEnd)
        .replace(QStringLiteral("[TAB]"), QStringLiteral("\t"));
    const QString ending = path.toLower().right(4);
    WriteTemplateFile(text, path, false, ending == u".htm" || ending == u"html");
}

void RunLog()
{
    const QString section = QStringLiteral("Log");
    if (!isEnabled(section)) return;
    WriteTemplateFile(GetPref(section, QStringLiteral("LogTemplate")),
                      GetPref(section, QStringLiteral("LogFile")), true, false);
}

} // namespace Tarnby
