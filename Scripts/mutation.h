#pragma once

#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <unistd.h>

/// What mutate.py puts into the sources: mistakes that are made when ZEK_MUTATION is their number.
namespace zekmutation
{

/// Writes down a number, once, in the file that ZEK_MUTATION_REACHED names.
inline void Note(const char* file, int id)
{
    static bool isNoted[100000];
    if (isNoted[id])
        return;
    isNoted[id] = true;
    char text[16];
    const int length = std::snprintf(text, sizeof text, "%d\n", id);
    const int out = open(file, O_WRONLY | O_APPEND | O_CREAT, 0600);
    (void)!write(out, text, static_cast<std::size_t>(length));
    close(out);
}

/// Tells whether a mistake is to be made.
inline bool Is(int id)
{
    static const char* const text = std::getenv("ZEK_MUTATION");
    static const int chosen = text == nullptr ? -1 : std::atoi(text);
    static const char* const file = std::getenv("ZEK_MUTATION_REACHED");
    if (file != nullptr)
        Note(file, id);
    return chosen == id;
}

template <typename T>
T Number(int id, T value, int step)
{
    return Is(id) ? static_cast<T>(value + step) : value;
}

template <typename T>
T Or(int id, T value, T other)
{
    return Is(id) ? other : value;
}

// clang-format off
#define ZEK_OPERATOR(NAME, FROM, TO) template <typename A, typename B> \
auto NAME(int id, A&& a, B&& b) -> decltype(a FROM b) { return Is(id) ? a TO b : a FROM b; }
ZEK_OPERATOR(Less, <, <=)
ZEK_OPERATOR(LessEqual, <=, <)
ZEK_OPERATOR(More, >, >=)
ZEK_OPERATOR(MoreEqual, >=, >)
ZEK_OPERATOR(Equal, ==, !=)
ZEK_OPERATOR(NotEqual, !=, ==)
ZEK_OPERATOR(Plus, +, -)
ZEK_OPERATOR(Minus, -, +)
// clang-format on

} // namespace zekmutation
