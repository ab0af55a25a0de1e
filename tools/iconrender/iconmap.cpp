#include "tools/iconrender/iconmap.h"

#include <QRegularExpression>

namespace Tarnby::IconRender
{

namespace
{

enum class Section { None, Icons, Moon };

struct Reader {
    IconMap map;
    Section section = Section::None;
    QString set;
    QStringList &errors;

    void header(const QStringList &words, int lineNumber);
    void entry(const QStringList &words, int lineNumber);
    void error(int lineNumber, const QString &what)
    {
        errors << QStringLiteral("line %1: %2").arg(lineNumber).arg(what);
    }
};

void Reader::header(const QStringList &words, int lineNumber)
{
    // "[icons Shiny]" splits into "[icons" and "Shiny]"; a set name may hold blanks.
    const QString kind = words.first().mid(1);
    set = words.mid(1).join(QLatin1Char(' '));
    set.chop(1);
    section = kind == QStringLiteral("icons")  ? Section::Icons
              : kind == QStringLiteral("moon") ? Section::Moon
                                               : Section::None;
    if (section == Section::None || set.isEmpty()) error(lineNumber, QStringLiteral("bad section"));
}

void Reader::entry(const QStringList &words, int lineNumber)
{
    if (section == Section::Icons && words.size() == 2) {
        map.icons.append({set, words[0], words[1]});
        return;
    }
    bool numeric = false;
    const double lit = words.size() == 3 ? words[1].toDouble(&numeric) : 0;
    const bool phaseWord = words.size() == 3 && (words[2] == QStringLiteral("waxing") ||
                                                 words[2] == QStringLiteral("waning"));
    if (section == Section::Moon && numeric && phaseWord) {
        map.moons.append({set, words[0], lit, words[2] == QStringLiteral("waxing")});
        return;
    }
    error(lineNumber, QStringLiteral("bad entry"));
}

} // namespace

IconMap ReadIconMap(const QString &text, QStringList &errors)
{
    Reader reader{{}, Section::None, {}, errors};
    static const QRegularExpression blanks(QStringLiteral("\\s+"));
    int lineNumber = 0;
    for (const QString &raw : text.split(QLatin1Char('\n'))) {
        ++lineNumber;
        const QString line = raw.trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char('#'))) continue;
        const QStringList words = line.split(blanks);
        if (line.startsWith(QLatin1Char('[')) && line.endsWith(QLatin1Char(']')))
            reader.header(words, lineNumber);
        else
            reader.entry(words, lineNumber);
    }
    return reader.map;
}

} // namespace Tarnby::IconRender
