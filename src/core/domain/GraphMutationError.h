#pragma once

#include <exception>

namespace fenrow {

// The one exception the store throws: a graph change that would break the
// flow's rules. The store is unchanged when it is thrown.
class GraphMutationError : public std::exception {
public:
    enum class Kind { cycleRejected, selfLoop, invalidItems };

    explicit GraphMutationError(Kind kind) : m_kind(kind) {}
    Kind kind() const { return m_kind; }
    const char *what() const noexcept override;

private:
    Kind m_kind;
};

} // namespace fenrow
