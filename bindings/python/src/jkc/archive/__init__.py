"""Converts trees of files of any size, with the program jkc, on this machine or on a Dask cluster.

    python -m jkc.archive SRC DST --to UTF-8 --scheduler tcp://host:8786

What becomes of a file is the program's decision: each task runs ``jkc convert`` on some files. This package lists the
files, deals them out, and keeps the report by which a run that was interrupted goes on.
"""
