#pragma once
// Readable GoogleTest failure messages for Qt types.

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <ostream>

QT_BEGIN_NAMESPACE
inline void PrintTo(const QString &s, std::ostream *os)
{
    *os << '"' << s.toStdString() << '"';
}
inline void PrintTo(const QStringList &l, std::ostream *os)
{
    *os << '[' << l.join(QStringLiteral(", ")).toStdString() << ']';
}
inline void PrintTo(const QDateTime &d, std::ostream *os)
{
    *os << d.toString(Qt::ISODateWithMs).toStdString();
}
inline void PrintTo(const QVariant &v, std::ostream *os)
{
    *os << v.toString().toStdString();
}
QT_END_NAMESPACE
