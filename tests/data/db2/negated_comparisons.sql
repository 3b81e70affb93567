SELECT a FROM t WHERE a != 1 AND b !< 2 AND c !> 3 AND d <> 4
