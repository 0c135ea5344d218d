// Process-wide registry from managed type identity to Python type object.
#pragma once

#include <Python.h>
#include <cstdint>
#include <mutex>
#include <string>
#include <unordered_map>

class PyWrpTypesMap {
public:
    static PyWrpTypesMap* get_instance();

    void add(const std::u16string& name, PyTypeObject* type);
    bool find(const std::u16string& name, PyTypeObject*& out) const;

    void add(long key, PyTypeObject* type);
    bool find(long key, PyTypeObject*& out);

    void add_weak(long key, PyTypeObject* type);
    bool find_weak(long key, PyTypeObject*& out);

    void reserve(int count);

private:
    PyWrpTypesMap();
    std::unordered_map<std::u16string, PyTypeObject*> m_by_name;
    std::unordered_map<long, PyTypeObject*> m_by_key;
    std::unordered_map<long, PyTypeObject*> m_weak;
    std::mutex m_by_key_lock;
    std::mutex m_weak_lock;
};
