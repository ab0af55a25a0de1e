#pragma once
// The element operations that the program needs of a shown skin page, addressed by the
// element's id. A missing element is not an error: reads give an empty text or false,
// writes do nothing. The interface window implements them on its browser; tests use a
// page of their own.

#include <QString>

namespace Tarnby
{

class SkinDocument
{
public:
    virtual ~SkinDocument() = default;
    virtual bool elementExists(const QString &id) = 0;
    virtual QString innerHtml(const QString &id) = 0;
    virtual void setInnerHtml(const QString &id, const QString &html) = 0;
    virtual QString className(const QString &id) = 0;
};

} // namespace Tarnby
