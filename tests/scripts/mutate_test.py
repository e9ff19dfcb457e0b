"""scripts/mutate: the changes that it makes of a line. Called with the repository's folder."""
import importlib.machinery
import importlib.util
import os
import random
import sys
import unittest

REPOSITORY = sys.argv.pop()
sys.dont_write_bytecode = True
loader = importlib.machinery.SourceFileLoader("mutate", os.path.join(REPOSITORY, "scripts", "mutate"))
mutate = importlib.util.module_from_spec(importlib.util.spec_from_loader("mutate", loader))
loader.exec_module(mutate)


class Changes(unittest.TestCase):
    def expect(self, line, *changed):
        self.assertEqual(list(mutate.changes_of(line)), list(changed))

    def test_a_comparison_is_turned(self):
        self.expect("if (row <= last && open)", "if (row < last && open)", "if (row <= last || open)")

    def test_a_constant_is_moved(self):
        self.expect("return 10;", "return 11;")
        self.expect("return 0.5;", "return 1.5;")

    def test_digits_in_a_name_or_a_longer_number_are_no_constant(self):
        self.expect("uint8_t bits = mask2;")
        self.expect("long = 10'000;")

    def test_arguments_are_swapped_and_the_same_one_twice_is_not(self):
        self.expect("draw(left, top);", "draw(top, left);")
        self.expect("draw(left, left);")

    def test_a_poll_is_removed(self):
        self.expect("  DO(DRAW());", "  static_cast<void>(DRAW());")

    def test_a_poll_before_a_return_of_nothing_stays_but_not_in_a_loop(self):
        before_returns = 0
        for path, number, changed in mutate.all_changes(["game"]):
            with open(os.path.join(REPOSITORY, path), encoding="utf-8") as file:
                lines = file.read().split("\n")
            if changed.lstrip().startswith("static_cast<void>(") and lines[number + 1].strip() == "return {};":
                before_returns += 1
                self.assertTrue(lines[number].startswith("    "), lines[number])
        self.assertGreater(before_returns, 0)

    def test_text_and_comments_stay(self):
        self.expect('print("1 < 2"); // 3 < 4')
        self.expect("#if __GNUC__ >= 12")

    def test_the_same_seed_gives_the_same_changes(self):
        orders = []
        for _ in range(2):
            changes = list(mutate.all_changes(["game"]))
            random.Random(7).shuffle(changes)
            orders.append(changes)
        self.assertEqual(orders[0], orders[1])
        self.assertGreater(len(orders[0]), 1000)
        for path, number, changed in orders[0][:200]:
            with open(os.path.join(REPOSITORY, path), encoding="utf-8") as file:
                self.assertNotEqual(file.read().split("\n")[number], changed)


if __name__ == "__main__":
    unittest.main()
