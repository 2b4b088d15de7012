#include "Memory.h"

#include <cstdlib>
#include <new>

namespace memory {

Plan& plan()
{
    static thread_local Plan s_plan;
    return s_plan;
}

namespace {

bool fails(std::size_t size)
{
    Plan& now = plan();
    if (now.left < 0 || size < now.least || now.left-- > 0)
        return false;
    now.left = now.goesOn ? 0 : -1;
    ++now.failures;
    return true;
}

void* allocate(std::size_t size)
{
    void* memory = fails(size) ? nullptr : malloc(size > 0 ? size : 1);
    if (!memory)
        throw std::bad_alloc();
    return memory;
}

} // namespace

} // namespace memory

void* operator new(std::size_t size)
{
    return memory::allocate(size);
}

void* operator new[](std::size_t size)
{
    return memory::allocate(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return memory::fails(size) ? nullptr : malloc(size > 0 ? size : 1);
}

void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept
{
    return operator new(size, tag);
}

void operator delete(void* memory) noexcept
{
    free(memory);
}

void operator delete[](void* memory) noexcept
{
    free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept
{
    free(memory);
}

void operator delete(void* memory, const std::nothrow_t&) noexcept
{
    free(memory);
}

void operator delete[](void* memory, const std::nothrow_t&) noexcept
{
    free(memory);
}
