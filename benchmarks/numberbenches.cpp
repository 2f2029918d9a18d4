#include "benches.h"
#include "models.h"

#include "base/numbertext.h"

#include <benchmark/benchmark.h>

#include <charconv>

namespace bench {

namespace {

constexpr std::size_t value_count = 4000;

// Half of them plain, half with an exponent.
template <typename Real>
std::vector<Real> some_values() {
    std::vector<Real> values;
    for (const Noise& noise : {temperatures, permeabilities}) {
        for (const float value : noise.values(value_count / 2)) {
            // Doubles with all their digits.
            values.push_back(static_cast<Real>(value) * static_cast<Real>(1.1));
        }
    }
    return values;
}

std::vector<std::string> some_texts() {
    std::vector<std::string> texts;
    for (const float value : some_values<float>()) {
        texts.push_back(base::value_text(value));
    }
    return texts;
}

template <typename Real, typename Text>
void add_text(const char* name, Text text) {
    benchmark::RegisterBenchmark(name, [text](benchmark::State& state) {
        const std::vector<Real> values = some_values<Real>();
        for ([[maybe_unused]] auto _ : state) {
            for (const Real value : values) {
                text(value);
            }
        }
    });
}

template <typename Number>
void add_number(const char* name, Number number) {
    benchmark::RegisterBenchmark(name, [number](benchmark::State& state) {
        const std::vector<std::string> texts = some_texts();
        for ([[maybe_unused]] auto _ : state) {
            for (const std::string& text : texts) {
                benchmark::DoNotOptimize(number(text));
            }
        }
    });
}

template <typename Real>
void bare_to_chars(Real value) {
    constexpr int digits = sizeof(Real) == sizeof(float) ? 7 : 15;
    char buffer[32];
    benchmark::DoNotOptimize(
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, digits));
    benchmark::DoNotOptimize(buffer);
}

double bare_from_chars(const std::string& text) {
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

} // namespace

void add_numbers() {
    add_number("leading_number",
               [](const std::string& text) { return base::leading_number(text); });
    add_number("from_chars", bare_from_chars);
    add_text<float>("Format_Print",
                    [](float value) { benchmark::DoNotOptimize(base::Format_Print(value, 1)); });
    add_text<float>("value_text",
                    [](float value) { benchmark::DoNotOptimize(base::value_text(value)); });
    add_text<float>("to_chars", bare_to_chars<float>);
    add_text<double>("value_text of doubles",
                     [](double value) { benchmark::DoNotOptimize(base::value_text(value)); });
    add_text<double>("to_chars of doubles", bare_to_chars<double>);
}

} // namespace bench
