#include "host/protocol/LineMeasure.h"

#include "host/protocol/JsonText.h"
#include "host/store/image/Budget.h"

#include <vector>

#include <nlohmann/json.hpp>

namespace vex {

namespace {

// Each key is compared with those before it when the object is built.
constexpr std::size_t mostKeys = 100;
// What writes an id calls itself for each list or object in it.
constexpr std::size_t mostLevelsOfAnId = 33;

/// Counts what a text holds, and stops where that is too much.
class LineMeasure final : public nlohmann::json_sax<Json> {
public:
    explicit LineMeasure(std::size_t mostValues) : m_mostValues(mostValues) {}

    std::string const& problem() const { return m_problem; }

    bool null() override { return countValue(); }
    bool boolean(bool /*value*/) override { return countValue(); }
    bool number_integer(number_integer_t /*value*/) override { return countValue(); }
    bool number_unsigned(number_unsigned_t /*value*/) override { return countValue(); }
    bool number_float(number_float_t /*value*/, string_t const& /*text*/) override {
        return countValue();
    }
    bool string(string_t& /*value*/) override { return countValue(); }
    bool binary(binary_t& /*value*/) override { return countValue(); }
    bool start_object(std::size_t /*size*/) override { return open(); }
    bool key(string_t& name) override {
        m_isInId = m_keys.size() == 1 ? name == "id" : m_isInId;
        return ++m_keys.back() <= mostKeys ||
               stop("an object of the line has more than " + std::to_string(mostKeys) +
                    " keys, which is the limit; send those that are asked for");
    }
    bool end_object() override { return close(); }
    bool start_array(std::size_t /*size*/) override { return open(); }
    bool end_array() override { return close(); }
    bool parse_error(std::size_t /*position*/, std::string const& /*token*/,
                     nlohmann::detail::exception const& /*problem*/) override {
        return false; // told by who reads it
    }

private:
    bool countValue() {
        Budget::charge();
        return ++m_values <= m_mostValues ||
               stop("the line holds more than " + std::to_string(m_mostValues) +
                    " values, which is the limit; send fewer, or raise it with --max-values");
    }

    bool open() {
        m_keys.push_back(0);
        return m_isInId && m_keys.size() > 1 + mostLevelsOfAnId
                   ? stop("the id of the line is nested too deeply; a number or a text is enough")
                   : countValue();
    }

    bool close() {
        m_keys.pop_back();
        return true;
    }

    bool stop(std::string problem) {
        m_problem = std::move(problem);
        return false;
    }

    std::size_t m_mostValues;
    std::size_t m_values = 0;
    std::vector<std::size_t> m_keys; // of the objects and lists that are open
    bool m_isInId = false;
    std::string m_problem;
};

} // namespace

std::string tooMuchIn(std::string_view line, std::size_t mostValues) {
    LineMeasure measure(mostValues);
    Json::sax_parse(line, &measure);
    return measure.problem();
}

} // namespace vex
