// The registry from managed type identity to Python type object.
#include "objects/types_map.h"

#include <cmath>

PyWrpTypesMap::PyWrpTypesMap() = default;

PyWrpTypesMap* PyWrpTypesMap::get_instance()
{
    static PyWrpTypesMap map;
    return &map;
}

// The by-name table is written only while modules initialise and read
// afterwards, so it takes no lock.
void PyWrpTypesMap::add(const std::u16string& name, PyTypeObject* type)
{
    m_by_name[name] = type;
}

bool PyWrpTypesMap::find(const std::u16string& name, PyTypeObject*& out) const
{
    auto found = m_by_name.find(name);
    if (found == m_by_name.end())
        return false;
    out = found->second;
    return true;
}

void PyWrpTypesMap::add(long key, PyTypeObject* type)
{
    std::lock_guard<std::mutex> guard(m_by_key_lock);
    m_by_key[key] = type;
}

bool PyWrpTypesMap::find(long key, PyTypeObject*& out)
{
    std::lock_guard<std::mutex> guard(m_by_key_lock);
    auto found = m_by_key.find(key);
    if (found == m_by_key.end())
        return false;
    out = found->second;
    return true;
}

void PyWrpTypesMap::add_weak(long key, PyTypeObject* type)
{
    std::lock_guard<std::mutex> guard(m_weak_lock);
    m_weak[key] = type;
}

bool PyWrpTypesMap::find_weak(long key, PyTypeObject*& out)
{
    std::lock_guard<std::mutex> guard(m_weak_lock);
    auto found = m_weak.find(key);
    if (found == m_weak.end())
        return false;
    out = found->second;  // may be null: a remembered miss
    return true;
}

void PyWrpTypesMap::reserve(int count)
{
    if (count <= 0)
        return;
    m_by_name.rehash((size_t)std::ceil(count / m_by_name.max_load_factor()));
    std::lock_guard<std::mutex> guard(m_by_key_lock);
    m_by_key.rehash((size_t)std::ceil(count / m_by_key.max_load_factor()));
}
