select a from t where a > 1 order by a desc rows 1 to 10 by 2 percent with ties
