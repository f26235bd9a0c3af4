#pragma once
// Access to the shared logger without building it, for settings that must reach a logger that
// already exists.

namespace korvane::elements {
class KvDatadogLogger;
}

namespace korvane::elements::internal {

// The shared logger if `logger()` has built it, otherwise null. Any thread.
[[nodiscard]] KvDatadogLogger* sharedLoggerIfBuilt();

}  // namespace korvane::elements::internal
