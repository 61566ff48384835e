#pragma once

#include <QUuid>

namespace fenrow {

// An edge suggested by an inference engine, by node ids.
struct EdgeProposal {
    QUuid fromItemID;
    QUuid toItemID;

    friend bool operator==(const EdgeProposal &, const EdgeProposal &) = default;
};

} // namespace fenrow
