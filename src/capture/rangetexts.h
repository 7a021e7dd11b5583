// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace sixtrace {

// The rows of the time and the volt list, as plain constants.

struct TimeBaseRow {
    double milliseconds; ///< per division
    const char* text;    ///< five characters
};

inline constexpr std::array<TimeBaseRow, 28> kTimeBaseTexts{{
    {0.000005, "5  nS"}, {0.00001, "10 nS"}, {0.000025, "25 nS"}, {0.00005, "50 nS"}, {0.0001, "100nS"},
    {0.00025, "250nS"},  {0.0005, "500nS"},  {0.001, "1  uS"},    {0.0025, "2.5uS"},  {0.005, "5  uS"},
    {0.01, "10 uS"},     {0.025, "25 uS"},   {0.05, "50 uS"},     {0.1, "100uS"},     {0.25, "250uS"},
    {0.5, "500uS"},      {1, "1  mS"},       {2.5, "2.5mS"},      {5, "5  mS"},       {10, "10 mS"},
    {25, "25 mS"},       {50, "50 mS"},      {100, "100mS"},      {250, "250mS"},     {500, "500mS"},
    {1000, "1   S"},     {2500, "2.5 S"},    {5000, "5   S"},
}};

/// What the 20 family has in the rows 2, 5, 8 ... 26.
inline constexpr std::array<TimeBaseRow, 9> kTimeBaseTextsOf20{{
    {0.00002, "20 nS"},
    {0.0002, "200nS"},
    {0.002, "2  uS"},
    {0.02, "20 uS"},
    {0.2, "200uS"},
    {2, "2  mS"},
    {20, "20 mS"},
    {200, "200mS"},
    {2000, "2   S"},
}};

/// The volt list for the probe exponents 0 to 3. The first text has a small v, unlike the table of volt ranges.
inline constexpr std::array<std::array<const char*, 10>, 4> kVoltListTexts{{
    {"5.00mv", "10.0mV", "20.0mV", "50.0mV", "100 mV", "200 mV", "500 mV", "1.00 V", "2.00 V", "5.00 V"},
    {"50.0mV", "100 mV", "200 mV", "500 mV", "1.00 V", "2.00 V", "5.00 V", "10.0 V", "20.0 V", "50.0 V"},
    {"500 mV", "1.00 V", "2.00 V", "5.00 V", "10.0 V", "20.0 V", "50.0 V", "100  V", "200  V", "500  V"},
    {"5.00 V", "10.0 V", "20.0 V", "50.0 V", "100  V", "200  V", "500  V", "1000 V", "2000 V", "5000 V"},
}};

} // namespace sixtrace
