// Shares independent pieces of work out over the cores; knows nothing of what the work is.
#pragma once

#include <functional>

/// Number of cores that `parallelFor` may use; at least 1.
int coreCount();

/// Calls `work(i)` for every i from 0 to `count` - 1, on up to `threadLimit` threads (0: `coreCount()`), and returns
/// when all are done. The calls must not depend on each other's order. With one thread or one piece all runs on the
/// caller's.
void parallelFor(int count, const std::function<void(int)>& work, int threadLimit = 0);
