"""Clips written by hand: uncompressed pictures of which every pixel is known."""


def frame_bytes(width, height, level):
    """One YUV 4:2:0 picture: a ramp from top to bottom that starts at this level, no colour."""
    rows = b"".join(bytes([min(level + y * 40 // max(height, 1), 235)]) * width
                    for y in range(height))
    chroma = b"\x80" * (2 * ((width + 1) // 2) * ((height + 1) // 2))
    return rows + chroma


def write_clip(path, width, height, frames, fps="25:1"):
    """A clip whose brightness changes from frame to frame."""
    pictures = [b"FRAME\n" + frame_bytes(width, height, level) for level in (90, 120, 70, 110, 80)]
    block = b"".join(pictures)
    with open(path, "wb") as clip:
        clip.write(f"YUV4MPEG2 W{width} H{height} F{fps} Ip A1:1 C420jpeg\n".encode())
        for _ in range(frames // len(pictures)):
            clip.write(block)
        clip.write(b"".join(pictures[:frames % len(pictures)]))
