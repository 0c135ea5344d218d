// Managed results to Python wrappers. The Python type is chosen from the
// declared type and, where the declaration allows, the handle's runtime type
// looked up through the registry's caches.
#include "objects/clr_to_py.h"

#include "hosting/exchange_host.h"
#include "objects/clr_object.h"
#include "objects/markattr.h"
#include "objects/objects_state.h"
#include "objects/types_map.h"

namespace {

void release_handle(void* handle)
{
    if (handle)
        ExchangeHost::get_instance()->free_instance(handle);
}

// The Python type registered under the handle's managed runtime type name, or
// null. Null with an error set when the managed side raised.
PyTypeObject* find_type_by_runtime_name(void* handle)
{
    std::u16string name = ExchangeHost::get_instance()->get_type_name(handle);
    if (PyErr_Occurred())
        return nullptr;
    PyTypeObject* type = nullptr;
    if (!name.empty())
        PyWrpTypesMap::get_instance()->find(name, type);
    return type;
}

// A new wrapper of `type` for a handle already known to be non-null.
PyObject* wrap(void* handle, PyTypeObject* type)
{
    PyObject* obj = type->tp_new(type, nullptr, nullptr);
    if (!obj) {
        release_handle(handle);
        return nullptr;
    }
    reinterpret_cast<PyClrObject*>(obj)->clr_handle = handle;
    return obj;
}

// The weak lookup, failing the conversion (and releasing the handle) when
// the managed side raised while naming the type.
bool runtime_type_weak(void* handle, intptr_t type_key, PyTypeObject*& type)
{
    type = get_py_type_weak_object_by_arg(handle, type_key);
    if (PyErr_Occurred()) {
        release_handle(handle);
        return false;
    }
    return true;
}

// The Python type chosen for a (runtime type, declared type) pair is
// remembered in the objects state's resolved-type table, so the hot path of an
// object result is two compares.
ResolvedType& resolved_slot(intptr_t type_key, PyTypeObject* declared)
{
    uintptr_t h = (uintptr_t)type_key ^ ((uintptr_t)declared >> 4);
    h ^= h >> 9;
    return objects_state().resolved[(h >> 3) % kResolvedTypeSlots];
}

// The type to wrap a handle with: the registered runtime type when `accept`
// says it may stand for the declared type, else the declared type. False
// (handle released) when the managed side raised while naming the type.
template <typename Accept>
bool choose_type(const PyObjectOutArg& arg, PyTypeObject* declared, Accept accept, PyTypeObject*& chosen)
{
    ResolvedType& slot = resolved_slot(arg.type_key, declared);
    if (slot.type_key == arg.type_key && slot.declared == declared && arg.type_key != 0) {
        chosen = slot.chosen;
        return true;
    }
    PyTypeObject* found = nullptr;
    if (!runtime_type_weak(arg.handle, arg.type_key, found))
        return false;
    chosen = found && accept(found) ? found : declared;
    slot = ResolvedType{arg.type_key, declared, chosen};
    return true;
}

}  // namespace

PyTypeObject* get_py_type_weak_object_by_arg(void* handle, intptr_t type_key)
{
    PyWrpTypesMap* map = PyWrpTypesMap::get_instance();
    PyTypeObject* type = nullptr;
    if (map->find_weak((long)type_key, type))
        return type;
    type = find_type_by_runtime_name(handle);
    if (PyErr_Occurred())
        return nullptr;                   // not remembered: the next call asks again
    map->add_weak((long)type_key, type);  // a miss is remembered as null
    return type;
}

PyTypeObject* get_py_type_object_by_obj(void* handle, intptr_t type_key)
{
    PyWrpTypesMap* map = PyWrpTypesMap::get_instance();
    PyTypeObject* type = nullptr;
    if (map->find((long)type_key, type))
        return type;
    type = find_type_by_runtime_name(handle);
    if (type)
        map->add((long)type_key, type);
    return type;
}

PyObject* fn_py_clr_type_generic_new(void* handle, PyTypeObject* type)
{
    if (!handle)
        Py_RETURN_NONE;
    return wrap(handle, type);
}

PyObject* fn_conv_clr_clsobj_to_py_clsobj(void* handle, PyTypeObject* type)
{
    if (!handle)
        Py_RETURN_NONE;
    return wrap(handle, type);
}

PyObject* fn_conv_clr_ifcimpl_to_py_ifcimpl(const PyObjectOutArg& arg, PyTypeObject* ifc_type)
{
    if (!arg.handle)
        Py_RETURN_NONE;
    PyTypeObject* type = nullptr;
    auto shows_interface = [ifc_type](PyTypeObject* found) {
        return fn_contains_implicit_ifc_markattr(found, ifc_type);
    };
    if (!choose_type(arg, ifc_type, shows_interface, type))
        return nullptr;
    return wrap(arg.handle, type);
}

PyObject* fn_conv_clr_ifcimpl_to_py_ifcimpl_wps(const PyCollectionArg& arg, PyTypeObject* ifc_type)
{
    if (arg.kind == 1) {
        // A Python object that went through managed code comes back as itself.
        PyObject* obj = arg.value ? static_cast<PyObject*>(arg.value) : Py_None;
        Py_INCREF(obj);
        return obj;
    }
    return fn_conv_clr_ifcimpl_to_py_ifcimpl(PyObjectOutArg{arg.value, arg.type_key}, ifc_type);
}

PyObject* fn_conv_clr_basobj_to_py_basobj(const PyObjectOutArg& arg, PyTypeObject* declared)
{
    if (!arg.handle)
        Py_RETURN_NONE;
    // Only a registered subtype may stand in for the declared class.
    PyTypeObject* type = nullptr;
    auto derives = [declared](PyTypeObject* found) { return PyType_IsSubtype(found, declared) != 0; };
    if (!choose_type(arg, declared, derives, type))
        return nullptr;
    return wrap(arg.handle, type);
}
