import fcntl
import io
import os
import shutil
import tarfile
import zipfile

import archive_tree
import jkc
import pytest
from jkc.archive.__main__ import main
from jkc.archive.listing import batches
from jkc.archive.trees import Entry, LocalTree


try:
    import fsspec
except ImportError:
    fsspec = None
needs_fsspec = pytest.mark.skipif(fsspec is None, reason="there is no fsspec")


@pytest.fixture
def tree(tmp_path):
    return archive_tree.make(tmp_path / "src", 40)


@pytest.fixture
def convert(tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    return lambda *words, source="src", destination="dst": main(
        ["--to=UTF-8", "--jobs=2", "--batch-files=7", *words, source, destination])


def test_what_is_not_converted_is_told_and_copied_only_if_asked(convert, tree, tmp_path, capsys):
    assert convert() == 1
    archive_tree.check(tmp_path / "dst", tmp_path / "dst.jsonl", tree)
    assert capsys.readouterr().err == "jkc.archive: summary: 42 files: 40 converted, 1 undecided, 1 refused\n"
    assert convert("--copy-others", destination="all") == 1
    assert archive_tree.files(tmp_path / "all") == {name: data for name, (data, _) in tree.items()}


@pytest.mark.parametrize("options, outcome, text", [
    ([], "converted", "?\r\n".encode()),
    (["--eol=lf"], "converted", b"?\n"),
    (["--on-loss", "escape"], "converted", b"&#x2603;\r\n"),
    (["--on-loss=stop"], "refused", None),
    (["--strict"], "refused", None),
    (["--dry-run"], "converted", None),
])
def test_the_policy_is_the_programs(convert, tmp_path, capsys, options, outcome, text):
    archive_tree.put(tmp_path / "src", b"snow.txt", "\u2603\r\n".encode())
    convert("-tShift_JIS", "-fUTF-8", *options)
    path = tmp_path / "dst/snow.txt"
    assert (path.read_bytes() if path.exists() else None) == text
    report = tmp_path / "dst.jsonl"
    told = report.read_text() if report.exists() else "\n" + capsys.readouterr().out
    assert f'"outcome":"{outcome}"' in told.splitlines()[1] and '"character":"\u2603"' in told


@pytest.mark.parametrize("words, complaint", [
    ("-tlatin1 src other", "latin1"),
    ("-tUTF-8 --eol=x src other", "--eol"),
    ("-tUTF-8 --jobs=0 src other", "--jobs"),
    ("-tUTF-8 --scheduler=x --jobs=1 src other", "not allowed"),
    ("-tUTF-8 --report=src/a/0 src other", "none"),
    ("-tUTF-8 --strict src other", "another source, destination or policy"),
    ("-tUTF-8 nowhere://x other", "nowhere" if fsspec else "fsspec"),
    ("-tUTF-8 src src", "the same"),
    ("-tUTF-8 --keep-time src memory://x", "--keep-time" if fsspec else "fsspec"),
    ("-tUTF-8 src memory://x", "--report" if fsspec else "fsspec"),
])
def test_what_cannot_be_understood_is_status_2_and_touches_nothing(convert, tree, tmp_path, capsys, words, complaint):
    convert(destination="other")
    before = archive_tree.files(tmp_path)
    with pytest.raises(SystemExit) as ended:
        main(words.split())
    assert ended.value.code == 2 and complaint in capsys.readouterr().err
    assert archive_tree.files(tmp_path) == before


def test_two_runs_do_not_write_one_report(convert, tree, tmp_path, capsys):
    convert()
    with open(tmp_path / "dst.jsonl", "ab") as held:
        fcntl.flock(held, fcntl.LOCK_EX)
        with pytest.raises(SystemExit):
            convert()
    assert "another run has it" in capsys.readouterr().err


def test_files_are_chosen_as_the_program_does(convert, tmp_path):
    for name in [b"a.txt", b"b.txt", b"x/a.txt", b"x/y/c.txt", b"x/a.c", b".git/a.txt", b".jkc-abc", b"z/a.txt"]:
        archive_tree.put(tmp_path / "src", name, b"text\n")
    os.symlink("a.txt", tmp_path / "src/link.txt")
    os.mkfifo(tmp_path / "src/pipe.txt")
    (tmp_path / "src/empty").mkdir()
    assert convert("--include=*.txt", "--exclude=x/y", "--exclude=[zb]*", destination="src/new") == 0
    assert convert("--include=*.txt", "--exclude=x/y", "--exclude=[zb]*", destination="src/new") == 0
    assert sorted(archive_tree.files(tmp_path / "src/new")) == [b"a.txt", b"x/a.txt"]


def test_an_interrupted_run_goes_on_where_file_or_line_is_missing(convert, tree, tmp_path):
    convert()
    report = tmp_path / "dst.jsonl"
    kept = report.read_bytes().splitlines(keepends=True)
    os.utime(tmp_path / "dst/a/0", (1, 1))
    for keep in [kept[:10] + [kept[10][:20]], [kept[0][:9]], kept[:5] + [kept[5].replace(b"converted", b"failed")]]:
        report.write_bytes(b"".join(keep))
        (tmp_path / "dst/a/1").unlink()
        assert convert() == 1
        archive_tree.check(tmp_path / "dst", report, tree)
    done = report.stat()
    assert convert() == 1
    assert report.stat().st_ino == done.st_ino and report.stat().st_size == done.st_size


def test_what_is_done_is_not_done_again(convert, tree, tmp_path):
    convert()
    os.utime(tmp_path / "dst/a/0", (1, 1))
    convert()
    assert (tmp_path / "dst/a/0").stat().st_mtime == 1


def test_a_program_that_is_killed_fails_its_files_only(convert, tree, tmp_path, monkeypatch):
    """The third run is that of the second batch: the first asks whether the options are right."""
    program = tmp_path / "program"
    program.write_text(f"""#!/bin/bash
exec 9>>{tmp_path}/count; flock 9; echo >&9
[ $(wc -l <{tmp_path}/count) != 3 ] || kill -9 $$
exec {jkc.program()} "$@"
""")
    program.chmod(0o755)
    monkeypatch.setenv("JKC_PROGRAM", str(program))
    assert convert() == 3
    assert sum(line["outcome"] == "failed" for line in archive_tree.lines(tmp_path / "dst.jsonl")) == 7
    assert convert() == 1
    archive_tree.check(tmp_path / "dst", tmp_path / "dst.jsonl", tree)


def test_a_file_or_folder_that_cannot_be_read_does_not_keep_the_others(convert, tmp_path, monkeypatch, capsys):
    archive_tree.put(tmp_path / "src", b"a/x", b"text\n")
    archive_tree.put(tmp_path / "src", b"b/x", b"text\n")
    entries = LocalTree.entries

    def refusing(tree, folder):
        if folder == "a":
            raise PermissionError("not for you")
        return entries(tree, folder)

    monkeypatch.setattr(LocalTree, "entries", refusing)
    assert convert() == 3
    assert "a: not for you" in capsys.readouterr().err
    assert sorted(archive_tree.files(tmp_path / "dst")) == [b"b/x"]


def test_batches_are_bounded_by_files_and_bytes():
    files = [Entry(str(i), False, size) for i, size in enumerate([5, 5, 5, 100, 1, 1, 1, 1])]
    assert list(batches(files, 3, 10)) == [["0", "1"], ["2"], ["3"], ["4", "5", "6"], ["7"]]


def packed(kind, files, folder):
    """A URL of fsspec for a tree with these files, and one whose name leads out of it."""
    files = {**files, "../out.txt": b"text"} if kind != "memory" else files
    if kind == "memory":
        store = fsspec.filesystem("memory")
        store.store.clear()
        for name, data in files.items():
            store.pipe_file(f"/src/{name}", data)
        return "memory://src"
    if kind == "zip":
        with zipfile.ZipFile(folder / "src.zip", "w") as archive:
            for name, data in files.items():
                archive.writestr(name, data)
    else:
        with tarfile.open(folder / "src.tar", "w") as archive:
            for name, data in files.items():
                info = tarfile.TarInfo(name)
                info.size = len(data)
                archive.addfile(info, io.BytesIO(data))
    return f"{kind}://::{folder}/src.{kind}"


@needs_fsspec
@pytest.mark.parametrize("kind", ["memory", "zip", "tar"])
@pytest.mark.parametrize("to", ["dst", "memory://dst"])
def test_trees_of_fsspec_are_converted_as_folders_are(convert, tree, tmp_path, kind, to):
    tree = {name: value for name, value in tree.items() if name.isascii()}
    source = archive_tree.files(tmp_path / "src")
    url = packed(kind, {name.decode(): source[name] for name in tree}, tmp_path)
    report = tmp_path / "report.jsonl"
    outside = {} if kind == "memory" else {b"../out.txt": (b"", "failed")}
    results = fsspec.filesystem("memory" if ":" in to else "file")
    place = "/dst" if ":" in to else str(tmp_path / "dst")
    for lost in [None, f"{place}/a/0"]:  # a second run makes a result again that is gone
        if lost:
            results.rm(lost)
        assert convert(f"--report={report}", source=url, destination=to) == max(1, 3 * len(outside))
        results.get(place, str(tmp_path / "got"), recursive=True)
        archive_tree.check(tmp_path / "got", report, {**tree, **outside})
        shutil.rmtree(tmp_path / "got")
    assert not (tmp_path / "out.txt").exists()


@needs_fsspec
def test_file_urls_are_folders(convert, tree, tmp_path):
    convert("--keep-time", source=f"file://{tmp_path}/src", destination=f"file://{tmp_path}/dst")
    archive_tree.check(tmp_path / "dst", tmp_path / "dst.jsonl", tree)
