#include "DialogPresence.h"

namespace fenrow::DialogPresence {

namespace {
int openDialogs = 0;
}

int depth()
{
    return openDialogs;
}

Scope::Scope()
{
    ++openDialogs;
}

Scope::~Scope()
{
    --openDialogs;
}

} // namespace fenrow::DialogPresence
