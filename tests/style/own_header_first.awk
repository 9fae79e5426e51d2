# Reports every source that includes something before its own header. Being included first shows
# that a header compiles on its own.
#
#   awk -f own_header_first.awk FILE...    sources and headers; ends with status 1 when it reports one

BEGIN {
  for (i = 1; i < ARGC; ++i) given[ARGV[i]] = 1
}

FNR == 1 {
  own = FILENAME
  waiting = sub(/\.cpp$/, ".hpp", own) && own in given
}

waiting && /^[ \t]*#[ \t]*include/ {
  if (index($0, "\"" own "\"") == 0) {
    printf "%s:%d: includes something before %s\n", FILENAME, FNR, own
    failed = 1
  }
  waiting = 0
}

END { exit failed }
