"""What SkippingTest.cpp is, with Python's unittest."""

import unittest


class Skipping(unittest.TestCase):
    def test_passes(self):
        pass

    def test_skips(self):
        self.skipTest("as it would where a program isn't installed")

    def test_fails(self):
        self.fail("as it is meant to")


if __name__ == "__main__":
    unittest.main(verbosity=2)
