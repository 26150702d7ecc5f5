#pragma once
// Chunk files assembled by hand, independent of the writer, so that reader and writer are
// each checked against the format rather than against each other.

#include <cstdint>
#include <string>

inline std::string Be16(std::uint16_t v) { return {static_cast<char>(v >> 8), static_cast<char>(v)}; }
inline std::string Be32(std::uint32_t v) { return Be16(static_cast<std::uint16_t>(v >> 16)) + Be16(static_cast<std::uint16_t>(v)); }
inline std::string Leaf(const std::string& data, std::uint16_t type = 2) { return Be16(type) + Be32(static_cast<std::uint32_t>(data.size())) + data; }

// children: whole chunks back to back; count says how many they are.
inline std::string Group(std::uint32_t id, std::uint32_t count, const std::string& children)
{
    return Be16(1) + Be32(static_cast<std::uint32_t>(children.size())) + Be32(id) + Be32(count) + children;
}

inline std::string Profile(const std::string& name)
{
    return "XBF" + Be16(1) + Group(0, 2, Group(1, 1, Leaf("EventProfile")) + Group(3, 1, Leaf(name)));
}
