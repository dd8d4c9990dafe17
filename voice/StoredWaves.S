/* The stored wave cycles and click samples. */

#include "core/EmbedTables.inc"

        table thudforgeStoredWaves
        embed data/waves/pulse.raw, 4096
        embed data/waves/quad-pulse.raw, 4096
        embed data/waves/triangle.raw, 4096
        embed data/waves/trapez.raw, 4096
        embed data/waves/x-trapez.raw, 4096
        embed data/waves/user01.raw, 4096
        embed data/waves/user02.raw, 4096
        embed data/waves/user03.raw, 4096
        embed data/waves/user04.raw, 4096
        embed data/waves/user05.raw, 4096
        embed data/waves/user06.raw, 4096
        embed data/waves/user07.raw, 4096
        embed data/waves/user08.raw, 4096
        embed data/waves/user09.raw, 4096
        embed data/waves/user10.raw, 4096
        embed data/waves/user11.raw, 4096
        embed data/waves/user12.raw, 4096
        embed data/waves/user13.raw, 4096
        embed data/waves/user14.raw, 4096
        embed data/waves/user15.raw, 4096
        embed data/waves/user16.raw, 4096

        table thudforgeStoredClicks
        embed data/clicks/click1.raw, 436
        embed data/clicks/click2.raw, 1460
        embed data/clicks/click3.raw, 1953
        embed data/clicks/click4.raw, 1604
        embed data/clicks/click5.raw, 2336
        embed data/clicks/click6.raw, 4174
        embed data/clicks/click7.raw, 2464
        embed data/clicks/click8.raw, 5030
        embed data/clicks/click9.raw, 8224

        endtables
