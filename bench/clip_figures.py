"""What is measured of a clip: brightness, flicker, jerk, error. Needs ffmpeg."""
import math
import re
import subprocess

WINDOW = 15
SAME = 100.0  # dB that stand for no difference at all
SAMPLE = (320, 180)  # a frame is averaged down to this before its luma is taken
BLACK, WHITE = 16, 235


class Problem(Exception):
    pass


def output_of(*command):
    done = subprocess.run(command, capture_output=True, text=True)
    if done.returncode != 0:
        lines = done.stderr.strip().splitlines() or ["no reason given"]
        raise Problem(f"{command[0]} failed: {lines[-1]}")
    return done


def frames_of(clip, filters, size):
    """Frames of the clip behind ffmpeg's filters, as bytes."""
    command = ["ffmpeg", "-v", "error", "-i", clip, "-map", "0:v:0", "-vsync", "passthrough", "-vf",
               filters, "-f", "rawvideo", "-"]
    count = 0
    with subprocess.Popen(command, stdout=subprocess.PIPE) as reader:
        while frame := reader.stdout.read(size):
            if len(frame) < size:
                raise Problem(f"{clip} ends within a frame")
            count += 1
            yield frame
    if reader.returncode != 0 or not count:
        raise Problem(f"{clip} cannot be read")


def levels_of(clip, filters=""):
    """Mean luma of every frame, 0 at black to 255 at white, of the clip behind ffmpeg's filters."""
    width, height = SAMPLE
    chain = (filters + "," if filters else "") + (
        f"scale={width}:{height}:flags=area,format=yuv420p,extractplanes=y")
    size = width * height
    return [(sum(frame) / size - BLACK) * 255 / (WHITE - BLACK)
            for frame in frames_of(clip, chain, size)]


def channel_levels_of(clip):
    """Mean red, green and blue of every frame, 0..255."""
    width, height = SAMPLE
    size = width * height
    return [[sum(frame[c::3]) / size for c in range(3)] for frame in
            frames_of(clip, f"scale={width}:{height}:flags=area,format=rgb24", 3 * size)]


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
