// The host that a benchmark program brings along for the component.
#ifndef BENCH_HOST_H
#define BENCH_HOST_H

#include <memory>

namespace bench {

/// Makes the host ready for the component's start; it ends when the result is destroyed. Every
/// program links one definition of it: the light host or the driver's core.
std::shared_ptr<void> startHost();

} // namespace bench

#endif
