#include "tests/sweep/sweepfixture.h"

#include <limits>

namespace {

constexpr float Infinity = std::numeric_limits<float>::infinity();
constexpr float Nan = std::numeric_limits<float>::quiet_NaN();
constexpr float Noise = -70;

/// Levels of noise with signals at some bins.
std::vector<float> Levels(std::initializer_list<std::pair<size_t, float>> peaks, size_t count = 20) {
    std::vector<float> levels(count, Noise);
    for (const auto& [bin, level] : peaks)
        levels[bin] = level;
    return levels;
}

/// Edges in bins, level, and the seconds from and to.
struct Found {
    double from, to;
    float level;
    double start, stop;
    bool operator==(const Found&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Found& found) {
    return out << found.from << "-" << found.to << " " << found.level << " dB " << found.start << "-"
               << found.stop << " s";
}

std::vector<Found> Find(const std::vector<Sweep>& sweeps, const SweepSettings& settings = {}) {
    std::vector<Found> found;
    for (const SweepDetection& d : Detect(sweeps, settings))
        found.push_back({(d.from - 100e6) / 10e3, (d.to - 100e6) / 10e3, d.level, double(d.start) / 1e6,
                         double(d.stop) / 1e6});
    return found;
}

TEST(SweepDetectorTest, RunsAboveTheThresholdAreDetections) {
    struct {
        const char* name;
        std::vector<float> levels;
        SweepSettings settings;
        std::vector<Found> found;
    } const rows[] = {
        {"noise", Levels({}), {}, {}},
        {"one bin", Levels({{3, -50}}), {}, {{3, 4, -50, 1, 1}}},
        {"first and last bin", Levels({{0, -50}, {19, -40}}), {}, {{0, 1, -50, 1, 1}, {19, 20, -40, 1, 1}}},
        {"a run", Levels({{3, -50}, {4, -40}, {5, -45}}), {}, {{3, 6, -40, 1, 1}}},
        {"over the threshold, not at it", Levels({{3, -60}, {5, -59.9f}}), {}, {{5, 6, -59.9f, 1, 1}}},
        {"another threshold", Levels({{3, -60}, {5, -49}}), {20, 0, 0}, {{5, 6, -49, 1, 1}}},
        {"too narrow", Levels({{3, -50}, {7, -50}, {8, -50}}), {10, 20e3, 0}, {{7, 9, -50, 1, 1}}},
        {"no power is no value to be exceeded",
         {-Infinity, -Infinity, -Infinity, -70, -70, -40},
         {},
         {{5, 6, -40, 1, 1}}},
        {"a value is missing in a run", Levels({{3, -50}, {4, Nan}, {5, -50}}), {}, {{3, 6, -50, 1, 1}}},
        {"a value is missing beside a run", Levels({{2, Nan}, {3, -50}, {4, Nan}}), {}, {{3, 4, -50, 1, 1}}},
        {"nothing but no power", {-Infinity, -Infinity}, {}, {}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Find({SweepOf(1, row.levels)}, row.settings), row.found) << row.name;
}

TEST(SweepDetectorTest, RunsGoOnOverHops) {
    Sweep sweep = SweepOf(1, Levels({{18, -50}, {19, -50}, {20, -50}, {39, -40}}, 60));
    const auto noise = [&](size_t first) { return SweepHop{100e6 + double(first) * 10e3, 10e3, first, 20}; };
    sweep.hops = {noise(0), noise(20), noise(40)};
    EXPECT_EQ(Find({sweep}), (std::vector<Found>{{18, 21, -50, 1, 1}, {39, 40, -40, 1, 1}})) << "adjoining";

    sweep.hops[1].low += 50e3; // a gap of five bins
    EXPECT_EQ(Find({sweep}),
              (std::vector<Found>{{18, 20, -50, 1, 1}, {25, 26, -50, 1, 1}, {44, 45, -40, 1, 1}}));

    sweep.hops[1].low -= 80e3; // now it overlaps by three bins, which do not count again
    EXPECT_EQ(Find({sweep}), (std::vector<Found>{{18, 20, -50, 1, 1}, {36, 37, -40, 1, 1}}));
}

TEST(SweepDetectorTest, ADetectionLastsAsLongAsItsSignal) {
    const auto on = [](double second, float level = -50) { return SweepOf(second, Levels({{3, level}})); };
    const auto off = [](double second) { return SweepOf(second, Levels({})); };
    struct {
        const char* name;
        std::vector<Sweep> sweeps;
        double hold;
        std::vector<Found> found;
    } const rows[] = {
        {"its level is the highest", {on(1), on(2, -40), on(3, -45)}, 0, {{3, 4, -40, 1, 3}}},
        {"away", {on(1), off(2), on(3)}, 0, {{3, 4, -50, 1, 1}, {3, 4, -50, 3, 3}}},
        {"away for the hold time", {on(1), off(2), off(3), on(4), off(6.5)}, 2, {{3, 4, -50, 1, 4}}},
        {"away for longer", {on(1), off(2), off(3.1), on(4)}, 2, {{3, 4, -50, 1, 1}, {3, 4, -50, 4, 4}}},
        {"sweeps rarer than the hold time", {on(0), on(100), on(200)}, 5, {{3, 4, -50, 0, 200}}},
        {"a pause", {on(0), on(5), on(3600), on(3605)}, 5, {{3, 4, -50, 0, 5}, {3, 4, -50, 3600, 3605}}},
        {"time goes back", {on(100), on(101), on(50)}, 5, {{3, 4, -50, 100, 101}, {3, 4, -50, 50, 50}}},
        {"sweeps elsewhere", {on(1), SweepOf(20, Levels({}), 200e6), on(40)}, 5, {{3, 4, -50, 1, 40}}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Find(row.sweeps, {10, 0, row.hold}), row.found) << row.name;
}

TEST(SweepDetectorTest, SignalsAreFollowed) {
    const auto at = [](double second, std::initializer_list<std::pair<size_t, float>> peaks) {
        return SweepOf(second, Levels(peaks));
    };
    struct {
        const char* name;
        std::vector<Sweep> sweeps;
        std::vector<Found> found;
    } const rows[] = {
        {"edges are those of the strongest sweep",
         {at(1, {{3, -50}}), at(2, {{3, -40}, {4, -45}}), at(3, {{2, -50}, {3, -50}})},
         {{3, 5, -40, 1, 3}}},
        {"drift",
         {at(1, {{3, -50}, {4, -50}}), at(2, {{4, -50}, {5, -50}}), at(3, {{5, -50}, {6, -50}}),
          at(4, {{6, -50}, {7, -40}})},
         {{6, 8, -40, 1, 4}}},
        {"pieces of one",
         {at(1, {{3, -50}, {4, -50}, {5, -50}}), at(2, {{3, -40}, {5, -45}}),
          at(3, {{3, -50}, {4, -50}, {5, -50}})},
         {{3, 6, -40, 1, 3}}},
        {"run into one another for a while",
         {at(1, {{3, -50}, {5, -45}}), at(2, {{3, -30}, {4, -30}, {5, -30}}), at(3, {{3, -50}, {5, -45}})},
         {{3, 4, -50, 1, 3}, {5, 6, -45, 1, 3}}},
        {"neighbours that do not touch",
         {at(1, {{3, -50}}), at(2, {{5, -50}}), at(9, {})},
         {{3, 4, -50, 1, 1}, {5, 6, -50, 2, 2}}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Find(row.sweeps), row.found) << row.name;
}

TEST(SweepDetectorTest, DetectionsAreHandedOverWhenTheyEnd) {
    std::vector<double> ended;
    SweepDetector detector({10, 0, 0},
                           [&](const SweepDetection& detection) { ended.push_back(detection.Frequency()); });
    detector.Add(SweepOf(1, Levels({{3, -50}, {7, -50}})));
    detector.Add(SweepOf(2, Levels({{3, -50}})));
    EXPECT_EQ(ended, std::vector<double>{100'075'000.});
    detector.Finish();
    EXPECT_EQ(ended, (std::vector<double>{100'075'000., 100'035'000.}));
    detector.Finish();
    EXPECT_EQ(ended.size(), 2u);
}

} // namespace
