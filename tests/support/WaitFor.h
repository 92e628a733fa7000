#pragma once

#include <functional>

namespace test {

/// Runs the event loop until the condition holds; false when it doesn't within a limit that only a broken
/// program reaches. For conditions that need data to be fed again, feed inside the condition.
[[nodiscard]] bool WaitFor(const std::function<bool()>& condition);

/// Delivers what is queued for this thread.
void DeliverEvents();

}  // namespace test
