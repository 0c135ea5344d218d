"""In-memory binary streams for orvane.

``BufferStream`` is a seekable, readable and writable binary stream kept in
memory. It is accepted wherever the managed API takes a ``Stream``: managed
code reads and writes it through its ``readinto``/``write``/``seek`` methods,
so a presentation can be loaded from or saved to memory without a temporary
file::

    from orvane.pyio import BufferStream
    out = BufferStream()
    presentation.save(out, SaveFormat.PPTX)
    data = out.getvalue()
"""

import io

__all__ = ["BufferStream"]


class BufferStream(io.BufferedIOBase):
    """A binary stream over a growable in-memory buffer.

    ``BufferStream(initial=b"")`` starts with a copy of ``initial`` and the
    position at 0. Writing past the end pads the gap with zero bytes, as a
    file does. ``getvalue()`` returns the whole content as ``bytes``.
    """

    def __init__(self, initial=b""):
        super().__init__()
        self._buffer = bytearray(initial)
        self._pos = 0

    # -- state -------------------------------------------------------------

    def _check_open(self):
        if self.closed:
            raise ValueError("I/O operation on closed stream.")

    def readable(self):
        self._check_open()
        return True

    def writable(self):
        self._check_open()
        return True

    def seekable(self):
        self._check_open()
        return True

    def getvalue(self):
        """The whole content as bytes, whatever the position."""
        self._check_open()
        return bytes(self._buffer)

    def getbuffer(self):
        """A memoryview of the content (resizing is refused while it is held)."""
        self._check_open()
        return memoryview(self._buffer)

    # -- positioning -------------------------------------------------------

    def tell(self):
        self._check_open()
        return self._pos

    def seek(self, offset, whence=io.SEEK_SET):
        self._check_open()
        offset = offset.__index__()
        if whence == io.SEEK_SET:
            if offset < 0:
                raise ValueError("negative seek value %d" % offset)
            position = offset
        elif whence == io.SEEK_CUR:
            position = max(0, self._pos + offset)
        elif whence == io.SEEK_END:
            position = max(0, len(self._buffer) + offset)
        else:
            raise ValueError("invalid whence (%r, should be 0, 1 or 2)" % (whence,))
        self._pos = position
        return position

    def truncate(self, size=None):
        self._check_open()
        if size is None:
            size = self._pos
        else:
            size = size.__index__()
            if size < 0:
                raise ValueError("negative size value %d" % size)
        del self._buffer[size:]
        return size

    # -- reading -----------------------------------------------------------

    def read(self, size=-1):
        self._check_open()
        if size is None or size < 0:
            end = len(self._buffer)
        else:
            end = min(len(self._buffer), self._pos + size)
        data = bytes(self._buffer[self._pos:end])
        self._pos = max(self._pos, end)
        return data

    read1 = read

    def readinto(self, buffer):
        self._check_open()
        with memoryview(buffer) as view, view.cast("B") as target:
            data = self._buffer[self._pos:self._pos + len(target)]
            target[:len(data)] = data
        self._pos += len(data)
        return len(data)

    readinto1 = readinto

    # -- writing -----------------------------------------------------------

    def write(self, data):
        self._check_open()
        with memoryview(data) as view:
            data = view.cast("B").tobytes() if view.ndim != 1 or view.format != "B" else view.tobytes()
        end = self._pos + len(data)
        if self._pos > len(self._buffer):
            self._buffer.extend(bytes(self._pos - len(self._buffer)))
        self._buffer[self._pos:end] = data
        self._pos = end
        return len(data)

    def flush(self):
        self._check_open()

    def close(self):
        # The content stays reachable through getvalue() only while open,
        # as with io.BytesIO.
        super().close()

    def detach(self):
        raise io.UnsupportedOperation("BufferStream has no underlying raw stream")
