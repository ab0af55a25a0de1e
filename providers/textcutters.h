#pragma once
// The text cutters every provider reads its documents with. A document, be it JSON, an
// XML fragment or an HTML page, is text of a known layout: values are cut out of it by
// searching for marks. There is no JSON parser in the program, and the quirks below are
// relied on by the readers, so they stay as they are.
//
// All routines take any text and never fail.

#include <QString>

#include <optional>

namespace Tarnby
{

// The text between startMark and the next endMark behind it, both marks left out, with
// cutRight characters dropped from its end and prefix put in front.
// - startMark is searched case-sensitively from the start. When it is absent the result
//   is the empty text if mustExist is set, and otherwise the WHOLE text. Readers rely on
//   this (ReadJsonValue turns the whole document into "NA"); every caller must expect it.
// - An empty endMark means the end of the text. An endMark that is not found behind
//   startMark gives the whole text, whatever mustExist says.
// - prefix and cutRight apply only to a text cut between marks.
QString ExtractBetween(const QString &text, const QString &startMark, const QString &endMark,
                       const QString &prefix = QString(), int cutRight = 0, bool mustExist = false);

// The text between startMark and the next endMark behind it; nothing when either mark is
// missing, as it is in an empty file, an error page, a truncated answer or a document of
// another service. The strict form of ExtractBetween for readers that must tell a damaged
// document from a good one.
std::optional<QString> CutBetweenMarks(const QString &text, const QString &startMark,
                                       const QString &endMark);

// One value of a JSON document printed one value a line (the services' verbose form),
// read from `"key": ` to the terminator (CR LF in the documents of the Pulse service):
// - a trailing "," is dropped;
// - a string loses every double quote, embedded ones included;
// - null gives the empty text, true and false their words;
// - anything else is read as a number and printed again in the user's locale
//   ("72.50" is "72.5", "72,5" under a comma locale); what does not read as a number
//   (an object, an array, the whole document of a missing key) gives the empty text.
// An empty value comes back as "NA".
QString ReadJsonValue(const QString &document, const QString &key,
                      const QString &terminator = QStringLiteral("\r\n"));

// A string value: the text between `"key": "` and the next `",`, as ExtractBetween
// cuts it and nothing more, so a missing key gives the whole document.
QString ReadJsonText(const QString &document, const QString &key);

// What follows the last occurrence of mark, with the mark in front if keepMark; empty
// when the mark is absent.
QString TextAfterLast(const QString &text, const QString &mark, bool keepMark = false);

// Keeps "0" to "9", "-", "+", "." and ",", drops every other character. With the kind
// "Humidity" a result that reads as a number becomes a whole number ("95.0" is "95",
// rounded half to even).
QString KeepNumberCharacters(const QString &text, const QString &kind = QString());

// The value of a text that is a number in the user's locale (see isNumeric); no value
// for any other text.
std::optional<double> NumberInText(QStringView text);

// A number in the user's locale as a whole number ("72.5" gives "72", "73.5" gives "74":
// half to even); a text that is no number ("N/A", "") stays as it is.
QString WholeNumberText(QStringView text);

} // namespace Tarnby
