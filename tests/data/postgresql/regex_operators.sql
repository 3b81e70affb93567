SELECT a FROM t WHERE a ~ '^x' AND b ~* 'y$' AND c !~ 'z' AND d !~* 'w'
