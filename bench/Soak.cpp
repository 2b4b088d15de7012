#include "Commands.h"
namespace bench {
int soak(const Settings&)
{
    return 0;
}
} // namespace bench
