// libFuzzer entry for the text routines: the first byte picks the locale and the units,
// the rest is the text (UTF-8).
#include "core/processvalues.h"
#include "tests/derive/textinvariants.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0) return 0;
    Tarnby::ProcessValues &pv = Tarnby::process();
    const bool comma = data[0] & 0x80;
    pv.DecimalSymbol = comma ? QStringLiteral(",") : QStringLiteral(".");
    pv.GroupSymbol = comma ? QStringLiteral(".") : QStringLiteral(",");
    pv.NonUsNumberFormat = comma;
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data + 1),
                                           static_cast<qsizetype>(size - 1));
    const QString broken = Tarnby::Test::brokenTextPromise(text, data[0] & 0x7F);
    if (!broken.isEmpty()) {
        std::fprintf(stderr, "%s\n", qPrintable(broken));
        std::abort();
    }
    return 0;
}
