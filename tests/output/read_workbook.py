# SPDX-License-Identifier: MIT
"""Prints the cells of a workbook as an independent reader finds them: "row TAB col TAB kind TAB value", from 0."""
import csv
import io
import subprocess
import sys


def show(row, col, value):
    kind = "number" if isinstance(value, (int, float)) else "text"
    print(row, col, kind, repr(float(value)) if kind == "number" else value, sep="\t")


def show_csv(content):
    for row, cells in enumerate(csv.reader(io.StringIO(content))):
        for col, value in enumerate(cells):
            if value not in ("", "\f"):
                print(row, col, "any", value, sep="\t")


def main(reader, path):
    sys.stdout.reconfigure(encoding="utf-8")
    if reader == "xlrd":
        import xlrd

        book = xlrd.open_workbook(path, logfile=sys.stderr, verbosity=0)
        sheet = book.sheet_by_index(0)
        assert book.nsheets == 1
        for row in range(sheet.nrows):
            for col in range(sheet.ncols):
                if sheet.cell_type(row, col) != xlrd.XL_CELL_EMPTY:
                    show(row, col, sheet.cell_value(row, col))
    elif reader == "openpyxl":
        import openpyxl

        book = openpyxl.load_workbook(path)
        assert len(book.worksheets) == 1
        for row, cells in enumerate(book.worksheets[0].iter_rows()):
            for col, cell in enumerate(cells):
                if cell.value is not None:
                    show(row, col, cell.value)
    elif reader == "ssconvert":
        done = subprocess.run(["ssconvert", "--export-type=Gnumeric_stf:stf_csv", path, "fd://1"], check=True,
                              stdout=subprocess.PIPE)
        show_csv(done.stdout.decode("utf-8"))
    elif reader == "xls2csv":
        done = subprocess.run(["xls2csv", "-d", "utf-8", path], check=True, stdout=subprocess.PIPE)
        show_csv(done.stdout.decode("utf-8"))


main(sys.argv[1], sys.argv[2])
