#include "objects/objects_state.h"

namespace {
ObjectsState g_objects_state{};
}  // namespace

ObjectsState& objects_state()
{
    return g_objects_state;
}
