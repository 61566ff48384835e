#include "GraphMutationError.h"

namespace fenrow {

const char *GraphMutationError::what() const noexcept
{
    switch (m_kind) {
    case Kind::cycleRejected:
        return "the connection would close a cycle";
    case Kind::selfLoop:
        return "a task cannot depend on itself";
    case Kind::invalidItems:
        return "both tasks must belong to the same flow";
    }
    return "graph change refused";
}

} // namespace fenrow
