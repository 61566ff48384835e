#include "SampleFlow.h"

#include "AppPreferences.h"
#include "canvas/NodeSizeResolver.h"
#include "domain/FenrowStore.h"

#include <QCoreApplication>

#include <array>

namespace fenrow::SampleFlow {

const TaskFlow *seedIfNeeded(FenrowStore &store, AppPreferences &preferences, const NodeSizeResolver &sizes)
{
    if (preferences.hasSeededSampleFlow() || !store.flows().isEmpty())
        return nullptr;
    // Remembered (and in the file) before anything is made, so a crash
    // midway cannot seed twice.
    preferences.setHasSeededSampleFlow(true);

    const TaskFlow *flow = store.addFlow(qtTrId("sample.flow.name"));
    const std::array<QString, 5> titles{qtTrId("sample.flow.item.offer"), qtTrId("sample.flow.item.copy"),
                                        qtTrId("sample.flow.item.layout"), qtTrId("sample.flow.item.build"),
                                        qtTrId("sample.flow.item.publish")};
    std::array<const FlowNode *, 5> nodes{};
    for (std::size_t i = 0; i < titles.size(); ++i)
        nodes[i] = store.addNode(titles[i], *flow);

    constexpr std::array<std::pair<int, int>, 5> diamond{{{0, 1}, {0, 2}, {1, 3}, {2, 3}, {3, 4}}};
    for (const auto &[from, to] : diamond) {
        try {
            store.addEdge(*nodes[std::size_t(from)], *nodes[std::size_t(to)], EdgeSource::manual,
                          EdgeKind::dependency);
        } catch (const GraphMutationError &) {
            // One refused pair does not stop the others.
        }
    }
    store.arrangeAsTree(*flow, sizes);
    return flow;
}

} // namespace fenrow::SampleFlow
