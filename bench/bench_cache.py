"""The one folder where the benchmarks keep what they make from Debian's packages or
generate: ${TMPDIR:-/tmp}/vxbench, or VX_BENCH_CACHE. Never committed."""
import os
import tempfile


def folder(*parts):
    # gettempdir() already follows TMPDIR.
    base = os.environ.get("VX_BENCH_CACHE") or os.path.join(tempfile.gettempdir(), "vxbench")
    os.makedirs(base, exist_ok=True)
    return os.path.join(base, *parts)
