// The cost of the status record's routines: texts with many members, escaping, and finding the end
// of a text, compared with two JSON libraries. Prints the ratios after Google Benchmark's table.

#include <benchmark/benchmark.h>
#include <rapidjson/reader.h>

#include <cstdio>
#include <map>
#include <nlohmann/json.hpp>
#include <string>

#include "errors/status.h"

namespace {

int allocations = 0;
bool countingResize(zuerr_Status* status, std::uint32_t newSize) {
  allocations += newSize > status->capacity ? 1 : 0;
  return zuerr_defaultResize(status, newSize);
}

void buildDescription(benchmark::State& state) {
  for (auto _ : state) {
    zuerr_Status status{0, 0, countingResize, nullptr};
    allocations = 0;
    char* position = zuerr_setJson(&status, nullptr);
    for (std::int64_t member = 0; member < state.range(0); ++member) {
      position = zuerr_addString(&status, position, "member", "a value of some length");
    }
    benchmark::DoNotOptimize(position);
    zuerr_release(&status);
  }
  state.counters["allocations"] = allocations;
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(buildDescription)->Arg(10)->Arg(1000)->Arg(100000);

void escape(benchmark::State& state, char byte) {
  const std::string text(1 << 16, byte);
  std::string escaped(jsonbuf_escapedLength(text.c_str()), '\0');
  for (auto _ : state) {
    benchmark::DoNotOptimize(jsonbuf_escapedLength(text.c_str()));
    benchmark::DoNotOptimize(jsonbuf_escape(escaped.data(), text.c_str()));
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK_CAPTURE(escape, plain, 'x');
BENCHMARK_CAPTURE(escape, control, '\x01');

/// One MiB as a service reports it: objects of texts, numbers, truth values and short lists.
std::string realisticText() {
  std::string text = "[";
  for (int index = 0; text.size() < (1 << 20); ++index) {
    const std::string number = std::to_string(index);
    if (index > 0) text += ',';
    text += R"({"uri":"timescale://host)" + number + R"(.example","coherent":true,"offset_ns":-)" +
            number + R"(.25e-3,"devices":["device://a)" + number + R"(","device://b\t\"c\""],)" +
            R"("domain":{"maxOffset_ns":1000,"note":null}})";
  }
  return text + "]";
}

const std::string& text() {
  static const std::string made = realisticText();
  return made;
}

void findEnd(benchmark::State& state) {
  std::string buffer = text();
  for (auto _ : state) {
    if (jsonbuf_findEnd(buffer.data()) == nullptr) state.SkipWithError("not taken");
  }
}
BENCHMARK(findEnd);

void nlohmannAccept(benchmark::State& state) {
  for (auto _ : state) {
    if (!nlohmann::json::accept(text())) state.SkipWithError("not taken");
  }
}
BENCHMARK(nlohmannAccept);

void rapidjsonReader(benchmark::State& state) {
  for (auto _ : state) {
    rapidjson::StringStream stream(text().c_str());
    rapidjson::BaseReaderHandler<> handler;
    rapidjson::Reader reader;
    if (reader.Parse(stream, handler).IsError()) state.SkipWithError("not taken");
  }
}
BENCHMARK(rapidjsonReader);

/// Keeps the times per iteration, and for items those per item, in nanoseconds.
class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      const auto items = run.counters.find("items_per_second");
      times_[run.benchmark_name()] =
          items == run.counters.end()
              ? run.real_accumulated_time / static_cast<double>(run.iterations) * 1e9
              : 1e9 / items->second;
    }
  }

  void printRatios() {
    print("a member of 1,000, to one of 10", "buildDescription/1000", "buildDescription/10");
    print("a member of 100,000, to one of 1,000", "buildDescription/100000",
          "buildDescription/1000");
    print("escaping a control byte, to a plain one", "escape/control", "escape/plain");
    print("nlohmann-json accept, to findEnd", "nlohmannAccept", "findEnd");
    print("RapidJSON reader, to findEnd", "rapidjsonReader", "findEnd");
  }

 private:
  void print(const char* what, const char* measured, const char* base) {
    std::printf("%-42s %6.2f\n", what, times_.at(measured) / times_.at(base));
  }

  std::map<std::string, double> times_;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.printRatios();
  return 0;
}
