"""Workers and whole runs that are killed: nothing is lost, nothing is there twice."""
import os
import random
import signal
import subprocess
import sys
import threading
import time

import archive_tree
import jkc
import pytest
from jkc.archive.__main__ import main

FILES = 300


@pytest.fixture
def tree(tmp_path, monkeypatch):
    """A tree, and a program that takes its time."""
    program = tmp_path / "program"
    program.write_text(f'#!/bin/sh\nsleep 0.03\n{jkc.program()} "$@"\nstatus=$?\nsleep 0.03\nexit $status\n')
    program.chmod(0o755)
    monkeypatch.setenv("JKC_PROGRAM", str(program))
    return archive_tree.make(tmp_path / "src", FILES)


def wait_for_lines(report, count):
    for _ in range(9000):
        if report.exists() and report.read_bytes().count(b"\n") > count:
            return
        time.sleep(0.01)
    raise AssertionError("no progress")


def test_a_dask_worker_is_killed(tree, tmp_path):
    distributed = pytest.importorskip("distributed")
    here = "127.0.0.1:0"
    with distributed.LocalCluster(n_workers=2, threads_per_worker=1, processes=True, dashboard_address=here,
                                  worker_dashboard_address=here, local_directory=str(tmp_path)) as cluster:
        with distributed.Client(cluster) as client:
            workers = list(client.run(os.getpid).values())
        statuses = []
        run = threading.Thread(target=lambda: statuses.append(main(
            ["-tUTF-8", "--batch-files=5", "--scheduler", cluster.scheduler_address,
             str(tmp_path / "src"), str(tmp_path / "dst")])))
        run.start()
        wait_for_lines(tmp_path / "dst.jsonl", FILES // 4)
        os.kill(workers[0], signal.SIGKILL)
        assert len(workers) == 2 and not statuses  # midway
        run.join(200)
        assert statuses == [1]
    archive_tree.check(tmp_path / "dst", tmp_path / "dst.jsonl", tree)


def test_a_cluster_that_is_not_there_is_status_3(tree, tmp_path, capsys):
    pytest.importorskip("distributed")
    import dask
    with dask.config.set({"distributed.comm.timeouts.connect": "1s"}):
        assert main(["-tUTF-8", "--scheduler=tcp://127.0.0.1:1", str(tmp_path / "src"), str(tmp_path / "dst")]) == 3
    assert "tcp://127.0.0.1:1" in capsys.readouterr().err


def test_whole_runs_are_killed_at_random_moments(tree, tmp_path):
    report = tmp_path / "dst.jsonl"
    command = [sys.executable, "-m", "jkc.archive", "-tUTF-8", "-j2", "--batch-files=5",
               tmp_path / "src", tmp_path / "dst"]
    environment = {**os.environ, "PYTHONPATH": os.pathsep.join(sys.path)}
    rng = random.Random(1)
    midway = 0
    for part in range(1, 5):
        run = subprocess.Popen(command, env=environment, start_new_session=True, stderr=subprocess.DEVNULL)
        wait_for_lines(report, part * FILES // 6)
        time.sleep(rng.uniform(0, 0.06))
        # Programs that go on alone, or not.
        (os.killpg if part % 2 else os.kill)(run.pid, signal.SIGKILL)
        run.wait()
        midway += report.read_bytes().count(b"\n") < FILES
    assert midway > 2
    assert subprocess.run(command, env=environment, stderr=subprocess.DEVNULL).returncode == 1
    time.sleep(0.2)  # for programs that went on
    left_behind = [name for name in archive_tree.files(tmp_path / "dst") if b".jkc-" in name]
    for name in left_behind:  # of a program that was killed
        os.unlink(os.path.join(os.fsencode(tmp_path / "dst"), name))
    archive_tree.check(tmp_path / "dst", report, tree)
