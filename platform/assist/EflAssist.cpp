#include "efl_assist.h"

int ea_init(int reserved1, int reserved2)
{
    return reserved1 == 0 && reserved2 == 0 ? 0 : -1;
}
