/// Result and type codes of the host's C interface.
#ifndef STANDIN_ADSCODES_H
#define STANDIN_ADSCODES_H

#define RTNORM 5100
#define RTERROR (-5001)
#define RTSHORT 5003

#endif
