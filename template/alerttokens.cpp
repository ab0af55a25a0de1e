#include "template/alerttokens.h"

namespace Tarnby
{

namespace
{

AlertTextSource &alertTextSource()
{
    static AlertTextSource source;
    return source;
}

} // namespace

void setAlertTextSource(AlertTextSource source)
{
    alertTextSource() = std::move(source);
}

QString AlertsTokenText(bool fullText, bool html)
{
    const AlertTextSource &source = alertTextSource();
    return source ? source(fullText, html) : QString();
}

} // namespace Tarnby
