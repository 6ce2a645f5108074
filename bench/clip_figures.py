"""What is measured of a clip: brightness, flicker, jerk, error. Needs ffmpeg."""
import math
import re
import subprocess

WINDOW = 15
SAME = 100.0  # dB that stand for no difference at all
SAMPLE = (320, 180)  # a frame is averaged down to this before its luminance is taken


class Problem(Exception):
    pass


def output_of(*command):
    done = subprocess.run(command, capture_output=True, text=True)
    if done.returncode != 0:
        lines = done.stderr.strip().splitlines() or ["no reason given"]
        raise Problem(f"{command[0]} failed: {lines[-1]}")
    return done


def levels_of(clip):
    """Mean luminance of every frame, 0..255."""
    width, height = SAMPLE
    command = ["ffmpeg", "-v", "error", "-i", clip, "-map", "0:v:0", "-vsync", "passthrough", "-vf",
               f"scale={width}:{height}:flags=area,format=rgb24", "-f", "rawvideo", "-"]
    size = width * height
    levels = []
    with subprocess.Popen(command, stdout=subprocess.PIPE) as reader:
        while frame := reader.stdout.read(3 * size):
            if len(frame) < 3 * size:
                raise Problem(f"{clip} ends within a frame")
            levels.append((0.3 * sum(frame[0::3]) + 0.59 * sum(frame[1::3])
                           + 0.11 * sum(frame[2::3])) / size)
    if reader.returncode != 0 or not levels:
        raise Problem(f"{clip} cannot be read")
    return levels


def flicker_of(levels):
    half = WINDOW // 2
    squares = 0.0
    for i, level in enumerate(levels):
        around = levels[max(0, i - half):i + half + 1]
        mean = sum(around) / len(around)
        squares += (level / mean - 1.0) ** 2 if mean > 0 else 0.0
    return 100.0 * math.sqrt(squares / len(levels))


def jerk_of(levels):
    mean = sum(levels) / len(levels)
    bends = [abs(a - 2.0 * b + c) for a, b, c in zip(levels, levels[1:], levels[2:])]
    return 100.0 * sum(bends) / len(bends) / mean if bends and mean > 0 else 0.0


def psnr_of(clip, clean):
    """Mean peak signal to noise ratio over all frames and components, in dB."""
    done = output_of("ffmpeg", "-v", "info", "-i", clip, "-i", clean, "-lavfi",
                     "[0:v][1:v]psnr", "-f", "null", "-")
    found = re.search(r"PSNR .*average:(\S+)", done.stderr)
    if not found:
        raise Problem("ffmpeg named no PSNR")
    return min(float(found.group(1)), SAME)
