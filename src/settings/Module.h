#pragma once

#include <memory>

class QString;

// Parts of the program that bring big libraries with them lie in shared modules of their own, loaded at first
// use. A module exports one C function `breloMake` that makes its object and hands over its ownership.
namespace module
{

// The address of `breloMake` in a module. It is looked for beside the executable (build tree) and in
// lib/breloim beside the executable's folder (installed). Null when it or a library that it needs is missing.
using Factory = void* (*)();
Factory factory(const QString& name);

// The object of a module; `Interface` is what its `breloMake` returns. Null without the module.
template <typename Interface>
std::unique_ptr<Interface> make(const QString& name)
{
    const auto create = factory(name);
    return std::unique_ptr<Interface>(create ? static_cast<Interface*>(create()) : nullptr);
}

} // namespace module
