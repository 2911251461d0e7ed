/// Result buffers and entity names of the host's C interface.
#ifndef STANDIN_ADSDEF_H
#define STANDIN_ADSDEF_H

#include "adesk.h"

typedef Adesk::Int32 AdInt32;
typedef double ads_real;
typedef ads_real ads_point[3];
typedef std::int64_t ads_name[2];

struct ads_binary {
  short clen;
  char* buf;
};

union ads_u_val {
  ads_real rreal;
  ads_real rpoint[3];
  short rint;
  ACHAR* rstring;
  std::int64_t rlname[2];
  AdInt32 rlong;
  std::int64_t mnInt64;
  ads_binary rbinary;
};

struct resbuf {
  resbuf* rbnext;
  short restype;
  ads_u_val resval;
};

#endif
