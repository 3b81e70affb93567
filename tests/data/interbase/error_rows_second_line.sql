select a
from t
rows x
