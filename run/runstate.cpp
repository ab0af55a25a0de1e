#include "run/runstate.h"

namespace Tarnby
{

RunState &runState()
{
    static RunState state;
    return state;
}

} // namespace Tarnby
