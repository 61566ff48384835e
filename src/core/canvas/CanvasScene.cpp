#include "CanvasScene.h"

namespace fenrow {

int CanvasScene::edgeIndex(const QUuid &id) const
{
    for (std::size_t i = 0; i < edges.size(); ++i) {
        if (edges[i].id == id)
            return int(i);
    }
    return -1;
}

} // namespace fenrow
