#pragma once

#include <array>
#include <cstddef>

/// A registration matrix: 4 x 4 numbers, row by row.
class _SFMatrix // NOLINT(bugprone-reserved-identifier): the name is part of the host's interface
{
public:
    _SFMatrix() = default;
    explicit _SFMatrix(const std::array<double, 16>& adValues) : m_adValues(adValues) {}
    _SFMatrix(const _SFMatrix&) = default;
    _SFMatrix& operator=(const _SFMatrix&) = default;
    ~_SFMatrix() = default;

    double at(int nRow, int nColumn) const { return m_adValues[4 * static_cast<std::size_t>(nRow) + static_cast<std::size_t>(nColumn)]; }
    const std::array<double, 16>& values() const { return m_adValues; }

private:
    std::array<double, 16> m_adValues = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}; ///< the identity at first
};
