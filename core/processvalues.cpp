#include "core/processvalues.h"

namespace Tarnby
{

ProcessValues &process()
{
    static ProcessValues values;
    return values;
}

} // namespace Tarnby
