#!/usr/bin/env python3
"""Judges the finished Windows library from outside, with binutils and icoutils.

Nothing here comes from the effect's sources: the property list is written out by hand below, and its
numbers are compared with those that the effect reported at set-up.
"""
import argparse
import re
import struct
import subprocess
import sys
import unittest

SYSTEM_LIBRARIES = {"kernel32.dll", "user32.dll", "shell32.dll", "comctl32.dll", "gdi32.dll",
                    "msvcrt.dll"}
arguments = None


def run(*command):
    return subprocess.run(command, check=True, capture_output=True).stdout


def resource(kind, name):
    """The resource's bytes, taken out in the one language that it must have."""
    return run(arguments.wrestool, "--extract", "--raw", f"--type={kind}", f"--name={name}",
               "--language=1033", arguments.library)


def properties(data):
    """(vendor, key, id, length, data with padding) of each property, and the header."""
    header = struct.unpack_from("<HII", data)
    at = 10
    found = []
    while at < len(data):
        vendor, key, number, length = struct.unpack_from("<4s4sII", data, at)
        at += 16
        stored = (length + 3) // 4 * 4
        found.append((vendor[::-1].decode(), key[::-1].decode(), number, length,
                      data[at:at + stored]))
        at += stored
    return header, found, at


def pascal(text):
    raw = bytes([len(text)]) + text.encode()
    return raw + bytes(-len(raw) % 4)


class PropertyList(unittest.TestCase):
    def setUp(self):
        self.data = resource("PIPL", 16000)
        self.header, self.found, self.end = properties(self.data)
        self.by_key = {key: data for _, key, _, _, data in self.found}

    def test_is_one_resource_in_one_language(self):
        listed = run(arguments.wrestool, "--list", arguments.library).decode()
        lists = [line for line in listed.splitlines() if "PIPL" in line]
        self.assertEqual(len(lists), 1, listed)
        self.assertRegex(lists[0], r"--type='PIPL' --name=16000 --language=1033 ")
        self.assertRegex(lists[0], rf"size={len(self.data)}\]")

    def test_begins_as_windows_lists_do(self):
        self.assertEqual(self.header, (1, 0, 12))

    def test_holds_every_property_in_order_with_its_value(self):
        expected = [
            ("kind", 4, b"TKFe"),
            ("name", 12, pascal("Varilum4")),
            ("catg", 8, pascal("Tovan")),
            ("8664", 16, b"EntryPointFunc\0\0"),
            ("ePVR", 4, struct.pack("<HH", 2, 0)),
            ("eSVR", 4, struct.pack("<HH", 13, 14)),
            ("eVER", 4, struct.pack("<I", 0x00210001)),
            ("eINF", 2, struct.pack("<HH", 3, 0)),
            ("eGLO", 4, struct.pack("<I", 0x06008554)),
            ("eGL2", 4, struct.pack("<I", 0x01F09401)),
            ("eMNA", 16, pascal("Tovan Varilum4")),
            ("aeFL", 4, bytes(4)),
        ]
        self.assertEqual([(key, length, data) for _, key, _, length, data in self.found], expected)

    def test_every_property_has_the_vendor_and_no_number(self):
        for vendor, key, number, _, _ in self.found:
            self.assertEqual((vendor, number), ("8BIM", 0), key)

    def test_ends_with_its_last_property(self):
        self.assertEqual(self.end, len(self.data))

    def test_says_what_the_effect_reports_at_set_up(self):
        with open(arguments.setup) as file:
            reported = {name: int(value, 16) for name, value in (line.split() for line in file)}
        listed = {name: struct.unpack("<I", self.by_key[key])[0]
                  for name, key in (("version", "eVER"), ("out_flags", "eGLO"),
                                    ("out_flags2", "eGL2"))}
        self.assertEqual(listed, reported)


class Library(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.headers = run(arguments.objdump, "-p", arguments.library).decode()

    def test_is_a_64_bit_library(self):
        kind = run(arguments.objdump, "-f", arguments.library).decode()
        self.assertIn("pei-x86-64", kind)
        self.assertRegex(self.headers, r"(?m)^\s+DLL$")

    def test_exports_the_entry_point_and_nothing_else(self):
        table = self.headers[self.headers.index("[Ordinal/Name Pointer] Table"):]
        names = re.findall(r"(?m)^\s*\[ *\d+\] (\S+)$", table[:table.index("\n\n")])
        self.assertEqual(names, ["EntryPointFunc"])

    def test_needs_the_system_alone(self):
        needed = {name.lower() for name in re.findall(r"DLL Name: (\S+)", self.headers)}
        self.assertLessEqual(needed, SYSTEM_LIBRARIES)
        self.assertIn("kernel32.dll", needed)

    def test_has_no_console(self):
        self.assertRegex(self.headers, r"Subsystem\s+00000002\s")

    def test_keeps_data_from_running_and_moves_in_64_bits(self):
        flags = int(re.search(r"DllCharacteristics\s+([0-9a-f]+)", self.headers).group(1), 16)
        for name, bit in (("high-entropy", 0x20), ("moves", 0x40), ("data never runs", 0x100)):
            self.assertTrue(flags & bit, name)
        # Without relocations a library cannot move, whatever the flags say.
        self.assertRegex(self.headers, r"(?m)^Entry 5 0*[1-9a-f][0-9a-f]* ")

    def test_no_section_is_both_written_and_run(self):
        sections = run(arguments.objdump, "-h", arguments.library).decode()
        code = re.findall(r"(?m)^ +\d+ (\S+) .*\n +(.*CODE.*)$", sections)
        self.assertTrue(code)
        for name, flags in code:
            self.assertIn("READONLY", flags, name)

    def test_tells_its_version(self):
        data = resource(16, 1)
        numbers = [int(part) for part in arguments.version.split(".")] + [0]
        at = data.index(struct.pack("<I", 0xFEEF04BD))
        high, low = struct.unpack_from("<II", data, at + 8)
        self.assertEqual([high >> 16, high & 0xFFFF, low >> 16, low & 0xFFFF], numbers)
        for text in ("Varilum4.aex", "Tovan", arguments.version):
            self.assertIn(text.encode("utf-16-le"), data)


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    for name in ("library", "setup", "objdump", "wrestool", "version"):
        parser.add_argument("--" + name, required=True)
    arguments = parser.parse_args()
    unittest.main(argv=sys.argv[:1], verbosity=2)
