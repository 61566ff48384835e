#pragma once

#include <QUuid>

namespace fenrow {

// An edge suggested by an inference engine, by node ids.
struct EdgeProposal {
    QUuid fromItemID;
    QUuid toItemID;
};

} // namespace fenrow
