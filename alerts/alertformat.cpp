#include "alerts/alertformat.h"

#include "core/weathercache.h"
#include "derive/forecasttext.h"

#include <QRegularExpression>
#include <QStringList>

#include <array>
#include <limits>

namespace Tarnby
{

using namespace Qt::Literals::StringLiterals;

namespace
{

const QString kAlerts = u"Alerts"_s;
constexpr auto kAnyCase = Qt::CaseInsensitive;

// ----- short titles -----

QString capitaliseFirst(const QString &word)
{
    return word.left(1).toUpper() + word.mid(1);
}

// One-letter words ("a") keep their case.
QString capitaliseWords(const QString &text)
{
    QStringList words = text.split(u' ');
    for (QString &word : words) {
        if (word.size() >= 2) word = capitaliseFirst(word);
    }
    return words.join(u' ');
}

// The text in front of the first phrase, in this order of preference, that tells the
// alert's state rather than its name.
QString nameBeforeStatePhrase(const QString &title)
{
    static const std::array<QString, 4> phrases = {u" remains "_s, u" is in effect "_s,
                                                   u" in effect "_s, u" this morning"_s};
    for (const QString &phrase : phrases) {
        const qsizetype at = title.indexOf(phrase, 0, kAnyCase);
        if (at >= 0) return capitaliseWords(title.left(at).trimmed());
    }
    return title;
}

// Adds to `result` the run of words (of two letters or more) that begin with a lower-case
// letter when `lowerRun`, or with anything else otherwise; the run ends at the first word
// of the other kind. Words of a lower-case run are capitalised.
QString appendWordRun(QString result, const QStringList &words, bool lowerRun)
{
    for (const QString &word : words) {
        if (word.size() < 2) continue;
        if (word.front().isLower() != lowerRun) break;
        if (!result.isEmpty()) result += u' ';
        result += lowerRun ? capitaliseFirst(word) : word;
    }
    return result;
}

// ----- bulletins -----

// The bulletins keep the JSON escapes "\n" and "\r" as two characters each.
const QString kEscapedNewline = u"\\n"_s;

QString strongOpen(bool colour)
{
    return colour ? u"<STRONG STYLE='color:#BF1616'>"_s : u"<STRONG>"_s;
}

// A heading written in capitals in front of `mark` is set in bold, when it is shorter
// than maxLength.
QString strongCapitalLead(const QString &text, const QString &mark, qsizetype maxLength,
                          bool colour)
{
    const qsizetype end = text.indexOf(mark);
    if (end <= 0 || end >= maxLength) return text;
    const QString lead = text.left(end);
    if (lead != lead.toUpper()) return text;
    return strongOpen(colour) + lead + u"</STRONG>"_s + text.mid(end);
}

// The sender's line ("National Weather Service Portland OR ...") up to the paragraph that
// opens with "..." says nothing the reader needs.
QString withoutSenderLine(QString text)
{
    const qsizetype from =
        text.indexOf(kEscapedNewline + u"National Weather Service "_s, 0, kAnyCase);
    if (from < 0) return text;
    const qsizetype to = text.indexOf(uR"(\n\n...)"_s, from);
    return to < 0 ? text : text.remove(from, to - from);
}

QString escapesToBreaks(QString text)
{
    return text.replace(uR"(\n\n&&\r\n\r\n)"_s, u"<br><br><hr><br>"_s)
        .replace(uR"(\n\n&&)"_s, QString())
        .replace(uR"(\r\n)"_s, u"<br><br>"_s)
        .replace(uR"(\n\n)"_s, u"<br><br>"_s)
        .replace(kEscapedNewline, u" "_s);
}

// Section leads "* WHAT...", words joined by "..." and "...HEADLINE..." after a tag. The
// three share one case-blind matcher, so the capitals of the last one match any letter.
QString markUpSections(QString text)
{
    static const QRegularExpression sectionLead(uR"((\* [a-zA-Z ]+?)\.\.\.)"_s,
                                                QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression joinedWords(uR"(([A-Za-z])\.\.\.([A-Za-z]))"_s,
                                                QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression taggedHeadline(uR"(>([A-Z /-]+?)\.\.\.)"_s,
                                                   QRegularExpression::CaseInsensitiveOption);
    return text.replace(sectionLead, u"<br><br><strong>\\1</strong><br><br>"_s)
        .replace(joinedWords, u"\\1, \\2"_s)
        .replace(taggedHeadline, u"><strong>\\1</strong>"_s);
}

QString htmlBulletin(const QString &body, bool colour)
{
    QString text = withoutSenderLine(body);
    text = strongCapitalLead(text, u"<br>"_s, std::numeric_limits<qsizetype>::max(), colour);
    text = strongCapitalLead(text, kEscapedNewline, 100, colour);
    return markUpSections(escapesToBreaks(text));
}

// Real line breaks become sentence ends, so the bulletin reads as one line.
QString plainBulletin(QString body)
{
    return body.replace(u"  "_s, u" "_s)
        .replace(u".\n*"_s, u". *"_s)
        .replace(u"\n "_s, u". "_s)
        .replace(u"\r\n"_s, u". "_s)
        .replace(u"\n"_s, u". "_s)
        .replace(u": . "_s, u": "_s);
}

QString withoutLeftoverDots(QString text)
{
    return text.replace(u"<br><br><br><br>"_s, u"<br><br>"_s)
        .replace(u"..."_s, QString())
        .replace(u".."_s, QString())
        .replace(u"<br>."_s, u"<br>"_s);
}

QString footerLine(const char *label, const QString &time, bool html)
{
    const QString name = QString::fromLatin1(label);
    return html ? u"<STRONG>"_s + name + u":</STRONG> "_s + time + u"<BR>"_s
                : name + u": "_s + time + u"\r\n"_s;
}

QString bulletinFooter(const QString &issued, const QString &expires, bool html)
{
    if (issued.isEmpty() && expires.isEmpty()) return {};
    return (html ? u"<BR><BR>"_s : u"\r\n"_s) + footerLine("Issued", issued, html) +
           footerLine("Expires", expires, html);
}

QString alertBulletin(int row, bool html, bool colour)
{
    const QString index = QString::number(row);
    const QString body = GetCache(kAlerts, u"msg-body"_s + index);
    const QString text = html ? htmlBulletin(body, colour) : plainBulletin(body);
    return withoutLeftoverDots(text) + bulletinFooter(GetCache(kAlerts, u"issued"_s + index),
                                                      GetCache(kAlerts, u"expires"_s + index),
                                                      html);
}

} // namespace

QString GetAlertShortTitle(const QString &title)
{
    if (title.isEmpty() || title.contains(u"cancelled"_s, kAnyCase) ||
        title.contains(u"expired"_s, kAnyCase))
        return {};
    if (title.startsWith(u"ozone action day"_s, kAnyCase)) return u"Ozone Action Day"_s;
    const QStringList words = nameBeforeStatePhrase(title).split(u' ');
    QString result = appendWordRun(QString(), words, false);
    if (!result.contains(u' ')) result = appendWordRun(result, words, true);
    if (result.startsWith(u"THE "_s, kAnyCase)) result.remove(0, 4);
    return result;
}

QString GetAlertsInfo(bool html)
{
    const int count = CacheCount(kAlerts);
    QString info;
    for (int row = 1; row <= count; ++row) {
        const QString title = GetCache(kAlerts, u"short-title"_s + QString::number(row));
        if (title.isEmpty()) continue;
        if (!info.isEmpty()) info += row < count ? u", "_s : html ? u" &amp; "_s : u" & "_s;
        info += title;
    }
    return info.isEmpty() ? u"N/A"_s : info;
}

QString GetAlertsFullText(bool html, bool colour)
{
    const int count = CacheCount(kAlerts);
    QString text;
    for (int row = 1; row <= count; ++row) {
        if (!text.isEmpty()) text += html ? u"<BR><BR><BR><BR><BR>"_s : u"\r\n"_s;
        text += alertBulletin(row, html, colour);
    }
    return FixForecastCase(text);
}

QString AlertTokenText(bool fullText, bool html)
{
    return fullText ? GetAlertsFullText(html, html) : GetAlertsInfo(html);
}

} // namespace Tarnby
