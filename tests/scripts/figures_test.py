"""scripts/figures: its table, its JSON and its exit status. Called with the repository's folder."""
import json
import os
import subprocess
import sys
import tempfile
import unittest

FIGURES = os.path.join(sys.argv.pop(), "scripts", "figures")


def runs(name, *times, unit="ns", **more):
    return [{"name": name, "run_name": name, "run_type": "iteration", "cpu_time": float(time),
             "time_unit": unit, **more} for time in times]


def beside_loop(value, bound):
    return {"program": "bench_a", "what": "sum", "value": value, "unit": "ns", "peer": "loop",
            "peer_value": 100, **bound}


class Figures(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.json_path = os.path.join(folder.name, "all.json")
        self.path = os.path.join(folder.name, "bench_a.json")

    def report(self, result):
        """Exit status, table lines and JSON of one program's result."""
        with open(self.path, "w", encoding="utf-8") as file:
            json.dump(result, file)
        done = subprocess.run([FIGURES, self.json_path, self.path], capture_output=True, text=True,
                              check=False)
        self.errors = done.stderr
        with open(self.json_path, encoding="utf-8") as file:
            return done.returncode, done.stdout.splitlines(), json.load(file)

    def measured(self, context, *benchmarks):
        return self.report({"context": {"date": "now", **context},
                            "benchmarks": [run for of_one in benchmarks for run in of_one]})

    def alone(self, *figures):
        return self.report({"figures": list(figures)})

    def test_a_pair_is_judged_by_its_medians(self):
        status, lines, figures = self.measured(
            {"expect sum/loop": ">= 0.9"}, runs("sum/ours", 90, 100, 900), runs("sum/loop", 1, 120, 125))
        self.assertEqual(status, 0)
        self.assertEqual(lines[1], "sum   100 ns  loop, 120 ns      1.20   >= 0.900  yes")
        self.assertEqual(figures, [{"program": "bench_a", "what": "sum", "value": 100.0, "unit": "ns",
                                    "peer": "loop", "peer_value": 120.0, "at_least": 0.9, "ratio": 1.2,
                                    "reaches": True}])

    def test_a_pair_without_a_bound_is_a_figure_and_not_judged(self):
        status, lines, _ = self.measured({}, runs("sum/ours", 100), runs("sum/loop", 1))
        self.assertEqual((status, lines[1]), (0, "sum   100 ns  loop, 1.00 ns     0.0100"))

    def test_times_of_other_units_become_nanoseconds(self):
        _, lines, _ = self.measured({"time start": "<= 6e+07"}, runs("start", 38.9, unit="ms"))
        self.assertEqual(lines[1], "start  38.9 ms                           <= 60.0 ms  yes")

    def test_a_counter_is_turned_into_its_unit(self):
        _, lines, figures = self.measured({"counter music/ours, core": "100;%;<= 0.5"},
                                          runs("music/ours", 1, core=0.0051))
        self.assertEqual(figures[0]["value"], 0.51)
        self.assertEqual(lines[1].split(), ["music/ours,", "core", "0.510", "%", "<=", "0.500", "%", "no"])

    def test_a_cost_grows_no_faster_than_its_size(self):
        status, _, figures = self.measured({"growth notes": "0 2 6 "}, runs("notes/0", 5),
                                           runs("notes/2", 10), runs("notes/6", 45))
        self.assertEqual([figure.get("peer_value") for figure in figures], [None, None, 30.0])
        self.assertEqual((status, figures[2]["ratio"], figures[2]["peer"]), (1, 1.5, "3.00 times the one before"))

    def test_a_series_of_a_program_of_its_own_grows_likewise(self):
        sizes = [{"what": f"present {size}", "value": size * 2, "unit": "ns", "at_most": 3,
                  "series": "present", "size": size} for size in (1, 4)]
        status, _, figures = self.alone(*sizes)
        self.assertEqual((status, figures[0]["at_most"], figures[1]["ratio"]), (0, 3, 1.0))

    def test_a_ratio_that_misses_by_more_than_a_tenth_fails(self):
        for value, bound, status, verdict in ((221, {"at_most": 2}, 1, "NO"), (219, {"at_most": 2}, 0, "no"),
                                              (112, {"at_least": 1}, 1, "NO"), (110, {"at_least": 1}, 0, "no"),
                                              (200, {"at_most": 2}, 0, "yes")):
            found, lines, _ = self.alone(beside_loop(value, bound))
            self.assertEqual((found, lines[1].split()[-1]), (status, verdict), f"{value} {bound}")

    def test_a_value_alone_never_fails(self):
        status, lines, _ = self.alone({"what": "start", "value": 9e8, "unit": "ns", "at_most": 6e7})
        self.assertEqual((status, lines[1].split()[-1]), (0, "no"))

    def test_a_ratio_that_is_no_number_fails_and_is_null(self):
        status, _, figures = self.alone({**beside_loop(0, {"at_least": 2})})
        self.assertEqual((status, figures[0]["ratio"]), (1, None))

    def test_what_is_expected_and_not_measured_fails(self):
        for context in ({"expect sum/lop": ">= 1"}, {"time sun": ""}, {"counter sum/ours, core": "1;%;"},
                        {"growth sum": "1 2"}):
            status, _, _ = self.measured(context, runs("sum/ours", 1), runs("sum/loop", 1))
            self.assertEqual(status, 1, context)
            self.assertIn("expected, but not measured", self.errors)

    def test_a_benchmark_that_failed_fails(self):
        status, _, _ = self.measured({}, runs("sum/ours", 1), runs("sum/loop", 1, error_occurred=True))
        self.assertEqual(status, 1)
        self.assertIn("sum/loop (it failed)", self.errors)

    def test_no_figure_at_all_fails(self):
        self.assertEqual(self.alone()[0], 1)

    def test_a_file_that_is_not_there_is_named(self):
        done = subprocess.run([FIGURES, self.json_path, "nothing.json"], capture_output=True, text=True,
                              check=False)
        self.assertEqual(done.returncode, 1)
        self.assertIn("nothing.json", done.stderr)


if __name__ == "__main__":
    unittest.main()
