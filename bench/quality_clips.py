"""Made-up clips for bench/quality: each with its steady original. Needs ffmpeg."""
import math
import random
import subprocess
import typing

from clip_figures import Problem

LOSSLESS = ["-c:v", "ffv1", "-pix_fmt", "yuv420p", "-y"]
SIZE = (320, 180)


class Clip(typing.NamedTuple):
    """What is seen without flicker, and what is done to it; light and gains of frame n, a channel
    each."""
    name: str
    scene: str  # filter graph without inputs
    gain: typing.Callable
    light: typing.Callable = lambda n: (1.0, 1.0, 1.0)
    after: str = ""  # filter over both


def drift(seconds, seed):
    """Coloured light that hardly moves, so that only the gains change its level, with grain; dark
    enough for them to clip nothing."""
    chance = random.Random(seed)  # the filter's own differs from run to run, whatever its seed
    colours = ":".join(f"c{i}={chance.randrange(1 << 24):#08x}" for i in range(3))
    ends = ":".join(f"{axis}{end}={chance.randrange(size)}"
                    for axis, size in zip("xy", SIZE) for end in (0, 1))
    return (f"gradients=s={SIZE[0]}x{SIZE[1]}:r=24:d={seconds}:speed=0.002:n=3:{colours}:{ends},"
            f"format=gbrp,noise=alls=5:allf=t:all_seed={seed}," + dark(0.6, 20))


def dark(factor, black):
    level = f"val*{factor}+{black}"
    return f"format=gbrp,lutrgb=r={level}:g={level}:b={level}"


def sized(source):
    return f"{source}=s={SIZE[0]}x{SIZE[1]}:r=24"


def grey(gain):
    return lambda n: (gain(n),) * 3


def jitter(n):
    return 1 + 0.07 * math.sin(n * 2.3) + 0.05 * math.sin(n * 4.1 + 1) + 0.03 * math.sin(n * 7.7)


def tinted_jitter(n):
    """As of a lamp whose colour changes with its brightness."""
    return jitter(n), 1 + 0.8 * (jitter(n) - 1), 1 + 0.06 * math.sin(n * 3.1)


def flashes(n):
    return 1 + 0.35 * (n % 29 == 13) + 0.02 * math.sin(n * 2.3)


def fade(n, length, frames):
    """From black and back to it, never quite there."""
    return max(0.04, min(1.0, n / length, (frames - 1 - n) / length))


CLIPS = (
    Clip("random exposure", drift(6, 4), grey(jitter)),
    Clip("tinted flicker", drift(6, 14), tinted_jitter),
    Clip("lamp beat", drift(6, 9), grey(lambda n: 1 + 0.12 * math.sin(n * 0.9))),
    Clip("single flashes", drift(6, 5), grey(flashes)),
    Clip("dusk", drift(8, 7), grey(jitter),
         light=lambda n: (1 - n / 260, 1 - n / 270, 1 - n / 300)),
    Clip("fades", drift(6, 17), grey(jitter), light=grey(lambda n: fade(n, 40, 144))),
    Clip("three shots",
         f"{sized('testsrc2')},trim=end_frame=72,{dark(0.5, 30)}[a];"
         f"{sized('mandelbrot')},trim=end_frame=60,{dark(0.6, 40)}[b];"
         f"{drift(3, 12)}[c];[a][b][c]concat=n=3", grey(jitter)),
    Clip("bright sky", drift(6, 23) + f",{dark(1.5, 10)}", grey(jitter)),
    Clip("pull-down", drift(6, 21), grey(jitter), after="fps=30"),
    Clip("pillar box", drift(6, 3), grey(jitter), after="pad=400:180:40:0:black"),
)


def frames_of(scene):
    """Frames as green, blue and red planes."""
    command = ["ffmpeg", "-v", "error", "-filter_complex", scene + ",format=gbrp", "-vsync",
               "passthrough", "-f", "rawvideo", "-pix_fmt", "gbrp", "-"]
    size = 3 * SIZE[0] * SIZE[1]
    with subprocess.Popen(command, stdout=subprocess.PIPE) as reader:
        while len(frame := reader.stdout.read(size)) == size:
            yield frame
    if reader.returncode != 0:
        raise Problem("ffmpeg cannot make the scene: " + scene)


def times(plane, factor):
    return plane.translate(bytes(min(255, int(v * factor + 0.5)) for v in range(256)))


def lit(frame, red, green, blue):
    size = len(frame) // 3
    return (times(frame[:size], green) + times(frame[size:2 * size], blue)
            + times(frame[2 * size:], red))


def writer_to(path, after):
    command = ["ffmpeg", "-v", "error", "-f", "rawvideo", "-pix_fmt", "gbrp", "-video_size",
               f"{SIZE[0]}x{SIZE[1]}", "-framerate", "24", "-i", "-"]
    return subprocess.Popen([*command, *(["-vf", after] if after else []), *LOSSLESS, path],
                            stdin=subprocess.PIPE)


def make_clip(folder, clip):
    """Returns (flickering, steady), paths of files written without loss."""
    stem = str(folder / clip.name.replace(" ", "-"))
    paths = f"{stem}.mkv", f"{stem}-steady.mkv"
    with writer_to(paths[0], clip.after) as flickering, writer_to(paths[1], clip.after) as steady:
        for number, frame in enumerate(frames_of(clip.scene)):
            light = clip.light(number)
            steady.stdin.write(lit(frame, *light))
            flickering.stdin.write(lit(frame, *(a * b for a, b in zip(light, clip.gain(number)))))
    if flickering.returncode or steady.returncode:
        raise Problem(f"ffmpeg cannot write {clip.name}")
    return paths
