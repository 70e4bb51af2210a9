// Makes one table of what the benchmarks have measured.
// Usage: bench_table RATIOS.json RESULT.json...
// Reads the results of the benchmarks, prints their ratios as one table, and writes them to RATIOS.json. Fails when one
// of them has ended without a ratio.

#include <cmath>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <nlohmann/json.hpp>
#include <string>

namespace {

using Json = nlohmann::ordered_json;

/// Of one row: a ratio or a count, what it may be at most, and whether it is.
Json RowOf(const Json& result) {
  const std::string name = result.at("name");
  // The ratio counts as printed: two digits behind the point are more than a measurement can tell.
  const double ratio = std::round(result.at("ratio").get<double>() * 100) / 100;
  const double bound = result.at("bound");
  return {
      {"row", name.substr(0, name.find("/iterations:"))}, {"ratio", ratio}, {"bound", bound}, {"met", ratio <= bound}};
}

void Print(const Json& rows) {
  constexpr int kNameWidth = 54;
  constexpr int kNumberWidth = 8;
  std::cout << "\n"
            << std::left << std::setw(kNameWidth) << "row" << std::right << std::setw(kNumberWidth) << "ratio"
            << std::setw(kNumberWidth) << "bound"
            << "  met\n";
  for (const Json& row : rows) {
    std::cout << std::left << std::setw(kNameWidth) << row["row"].get<std::string>() << std::right << std::fixed
              << std::setprecision(2) << std::setw(kNumberWidth) << row["ratio"].get<double>()
              << std::setw(kNumberWidth) << row["bound"].get<double>() << (row["met"].get<bool>() ? "  yes" : "  NO")
              << "\n";
  }
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 3) {
    std::cerr << "usage: bench_table RATIOS.json RESULT.json...\n";
    return 64;
  }
  try {
    Json rows = Json::array();
    for (int i = 2; i < count; ++i) {
      const Json results = Json::parse(std::ifstream(arguments[i]));
      for (const Json& result : results.at("benchmarks")) rows.push_back(RowOf(result));
    }
    Print(rows);
    std::ofstream(arguments[1]) << rows.dump(2) << "\n";
  } catch (const std::exception& failure) {
    std::cerr << "bench_table: " << failure.what() << "\n";
    return 1;
  }
}
