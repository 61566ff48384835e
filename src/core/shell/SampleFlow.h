#pragma once

namespace fenrow {

class AppPreferences;
class FenrowStore;
class NodeSizeResolver;
class TaskFlow;

// The small example flow a new user meets: an offer, copy and layout in
// parallel, a build waiting for both, then publishing.
namespace SampleFlow {

// Seeds once per user, and only into an empty store: someone with data
// never gets it, and then the question is asked again next time. Returns
// the new flow, or null when nothing was seeded.
const TaskFlow *seedIfNeeded(FenrowStore &store, AppPreferences &preferences, const NodeSizeResolver &sizes);

} // namespace SampleFlow

} // namespace fenrow
