#include "module/module_state.h"

namespace {
ModuleState g_module_state{
    {PyModuleDef_HEAD_INIT, nullptr, nullptr, -1, nullptr, nullptr, nullptr, nullptr, nullptr},
    std::string(),
};
}  // namespace

ModuleState& module_state()
{
    return g_module_state;
}
