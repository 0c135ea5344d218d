#include "hosting_state.h"

namespace {
HostingState g_hosting_state{};
}  // namespace

HostingState& hosting_state()
{
    return g_hosting_state;
}
