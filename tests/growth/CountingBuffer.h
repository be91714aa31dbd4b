#pragma once

#include <cstddef>
#include <ostream>
#include <streambuf>

/// Takes what is written and keeps none of it.
class CountingBuffer final : public std::streambuf {
public:
    std::size_t count() const { return m_count; }

protected:
    int_type overflow(int_type character) override {
        ++m_count;
        return traits_type::not_eof(character);
    }
    std::streamsize xsputn(char const* /*text*/, std::streamsize count) override {
        m_count += static_cast<std::size_t>(count);
        return count;
    }

private:
    std::size_t m_count = 0;
};
