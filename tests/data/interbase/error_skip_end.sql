select first 1 skip
