select a from t where a !< 1 and b != 2 and c !> 3
