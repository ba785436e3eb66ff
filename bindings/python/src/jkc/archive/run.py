"""Deals batches out to workers."""
from __future__ import annotations

import contextlib
from concurrent.futures import FIRST_COMPLETED, Executor, Future, ThreadPoolExecutor, wait
from typing import Callable, Iterable, Iterator

from .task import Job, Line, convert_batch

PER_WORKER = 2  # batches that are given to it, so that one waits when another is done


class Workers:
    """Threads of this process that each wait for a program, or the workers of a Dask cluster."""

    def __init__(self, pool: Executor, count: Callable[[], int]) -> None:
        self.pool, self.count = pool, count

    def convert(self, job: Job, batches: Iterable[list[str]]) -> Iterator[tuple[list[str], list[Line] | Exception]]:
        """Each batch with its lines, or with why there are none, in the order in which they are done. No more batches
        are taken than the workers can be given. Raises OSError when the cluster cannot be reached."""
        waiting: dict[Future[list[Line]], list[str]] = {}
        for batch in batches:
            waiting[self.pool.submit(convert_batch, job, batch)] = batch
            if len(waiting) >= PER_WORKER * max(1, self.count()):
                yield from _finished(waiting)
        while waiting:
            yield from _finished(waiting)


@contextlib.contextmanager
def local_workers(jobs: int) -> Iterator[Workers]:
    pool = ThreadPoolExecutor(jobs)
    try:
        yield Workers(pool, lambda: jobs)
    finally:
        pool.shutdown(cancel_futures=True)


@contextlib.contextmanager
def dask_workers(address: str) -> Iterator[Workers]:
    try:
        from distributed import Client
    except ImportError:
        raise ValueError("it needs the package distributed") from None
    with Client(address, set_as_default=False) as client:
        pool = client.get_executor(pure=False)
        try:
            yield Workers(pool, lambda: sum(client.nthreads().values()))
        finally:
            pool.shutdown(wait=False)


def _finished(waiting: dict[Future[list[Line]], list[str]]) -> Iterator[tuple[list[str], list[Line] | Exception]]:
    for future in wait(waiting, return_when=FIRST_COMPLETED).done:
        batch = waiting.pop(future)
        if future.cancelled():
            raise ConnectionError("the scheduler is gone")
        error = future.exception()
        if error is not None and not isinstance(error, Exception):
            raise error
        yield batch, future.result() if error is None else error
